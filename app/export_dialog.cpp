#include "app/export_dialog.h"

#include "model/strings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

namespace curvix::app {

using model::LoadResString;
using output::SizeUnit;

namespace {

constexpr double kCentimetresPerInch = 2.54;

QSettings store()
{
    return QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
}

QDoubleSpinBox* sideBox(const char* name)
{
    auto* box = new QDoubleSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(0.01, output::kMaxPixels);
    return box;
}

} // namespace

ExportDialog::ExportDialog(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(LoadResString(2110));
    m_unit = new QComboBox;
    m_unit->setObjectName(QStringLiteral("exportUnit"));
    m_unit->addItem(LoadResString(2112), int(SizeUnit::Pixels));
    m_unit->addItem(LoadResString(2113), int(SizeUnit::Centimetres));
    m_width = sideBox("exportWidth");
    m_height = sideBox("exportHeight");
    m_dpi = new QSpinBox;
    m_dpi->setObjectName(QStringLiteral("exportDpi"));
    m_dpi->setRange(output::kMinDpi, output::kMaxDpi);
    m_dpi->setSuffix(QStringLiteral(" dpi"));
    m_pixels = new QLabel;
    m_pixels->setObjectName(QStringLiteral("exportPixels"));
    m_transparent = new QCheckBox(LoadResString(2118));
    m_transparent->setObjectName(QStringLiteral("exportTransparent"));
    m_lineWidth = new QDoubleSpinBox;
    m_lineWidth->setObjectName(QStringLiteral("exportLineWidth"));
    m_lineWidth->setRange(output::kMinLineWidth, output::kMaxLineWidth);
    m_lineWidth->setSingleStep(0.25);
    m_lineWidth->setPrefix(QStringLiteral("× "));

    auto* form = new QFormLayout;
    form->addRow(LoadResString(2111), m_unit);
    form->addRow(LoadResString(2114), m_width);
    form->addRow(LoadResString(2115), m_height);
    form->addRow(LoadResString(2116), m_dpi);
    form->addRow(QString(), m_pixels);
    form->addRow(QString(), m_transparent);
    form->addRow(LoadResString(2119), m_lineWidth);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &ExportDialog::unitChanged);
    for (QDoubleSpinBox* box : {m_width, m_height})
        connect(box, &QDoubleSpinBox::valueChanged, this, &ExportDialog::showPixels);
    connect(m_dpi, &QSpinBox::valueChanged, this, &ExportDialog::showPixels);
    connect(this, &QDialog::accepted, this, [this] { remember(options()); });
    setOptions(remembered());
}

output::ExportOptions ExportDialog::options() const
{
    output::ExportOptions options;
    options.size = {m_shownUnit, m_width->value(), m_height->value(), m_dpi->value()};
    options.transparent = m_transparent->isChecked();
    options.lineWidth = m_lineWidth->value();
    return options;
}

void ExportDialog::setOptions(const output::ExportOptions& options)
{
    m_shownUnit = options.size.unit;
    {
        const QSignalBlocker quiet(m_unit);
        m_unit->setCurrentIndex(m_unit->findData(int(options.size.unit)));
    }
    const bool centimetres = options.size.unit == SizeUnit::Centimetres;
    for (QDoubleSpinBox* box : {m_width, m_height})
        box->setDecimals(centimetres ? 2 : 0);
    m_width->setValue(options.size.width);
    m_height->setValue(options.size.height);
    m_dpi->setValue(options.size.dpi);
    m_dpi->setEnabled(centimetres);
    m_transparent->setChecked(options.transparent);
    m_lineWidth->setValue(options.lineWidth);
    showPixels();
}

void ExportDialog::unitChanged()
{
    // The other unit keeps the picture's size on paper: pixels are the screen's 96 dpi.
    output::ExportOptions current = options();
    const auto unit = SizeUnit(m_unit->currentData().toInt());
    const double factor = unit == SizeUnit::Centimetres ? kCentimetresPerInch / output::kScreenDpi
                                                        : output::kScreenDpi / kCentimetresPerInch;
    current.size.unit = unit;
    current.size.width *= factor;
    current.size.height *= factor;
    setOptions(current);
}

void ExportDialog::showPixels()
{
    const output::PictureSize size = options().size;
    const bool possible = output::isPossible(size);
    const QSize pixels = output::pixelSizeOf(size);
    m_pixels->setText(possible ? LoadResString(2120).arg(pixels.width()).arg(pixels.height())
                               : LoadResString(2121).arg(output::kMaxPixels));
    if (auto* box = findChild<QDialogButtonBox*>())
        box->button(QDialogButtonBox::Ok)->setEnabled(possible);
}

output::ExportOptions ExportDialog::remembered()
{
    QSettings settings = store();
    settings.beginGroup(QStringLiteral("export"));
    const output::ExportOptions defaults;
    output::ExportOptions options;
    const bool centimetres = settings.value(QStringLiteral("unit")).toString() == QLatin1String("cm");
    options.size.unit = centimetres ? SizeUnit::Centimetres : SizeUnit::Pixels;
    options.size.width = settings.value(QStringLiteral("width"), defaults.size.width).toDouble();
    options.size.height = settings.value(QStringLiteral("height"), defaults.size.height).toDouble();
    options.size.dpi = settings.value(QStringLiteral("dpi"), defaults.size.dpi).toInt();
    options.transparent = settings.value(QStringLiteral("transparent"), false).toBool();
    options.lineWidth = settings.value(QStringLiteral("lineWidth"), defaults.lineWidth).toDouble();
    // A store edited by hand must not make a picture that cannot be.
    if (!output::isPossible(options.size))
        options.size = defaults.size;
    if (!(options.lineWidth >= output::kMinLineWidth && options.lineWidth <= output::kMaxLineWidth))
        options.lineWidth = defaults.lineWidth;
    return options;
}

void ExportDialog::remember(const output::ExportOptions& options)
{
    QSettings settings = store();
    settings.beginGroup(QStringLiteral("export"));
    const bool centimetres = options.size.unit == SizeUnit::Centimetres;
    settings.setValue(QStringLiteral("unit"), centimetres ? QStringLiteral("cm") : QStringLiteral("px"));
    settings.setValue(QStringLiteral("width"), options.size.width);
    settings.setValue(QStringLiteral("height"), options.size.height);
    settings.setValue(QStringLiteral("dpi"), options.size.dpi);
    settings.setValue(QStringLiteral("transparent"), options.transparent);
    settings.setValue(QStringLiteral("lineWidth"), options.lineWidth);
}

} // namespace curvix::app
