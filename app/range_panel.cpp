#include "app/range_panel.h"

#include "app/form_names.h"
#include "app/fraction_input.h"
#include "app/pi_line_edit.h"
#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/angles.h"
#include "plot/coordinates.h"

#include <QActionGroup>
#include <QLineEdit>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace curvix::app {

using model::LoadResString;

namespace {

QString plainText(int number)
{
    return LoadResString(number).remove(QLatin1Char('&'));
}

// The fraction form's usual values, offered in its fields' lists.
const QStringList kWholes{"-3p", "-2p", "-p", "-0", "0", "p", "2p", "3p"};
const QStringList kNumerators{"0", "p", "2p", "3p", "5p"};
const QStringList kDenominators{"1", "2", "3", "4", "6"};

// Wide enough for the longest numbers a zoom writes (7 digits, a sign and a point) with
// the line edit's frame and inner margins, as QLineEdit sizes itself.
int rangeBoxWidth(const QLineEdit* box)
{
    const QFontMetrics metrics = box->fontMetrics();
    int text = 0;
    for (const QString& longest : {QStringLiteral("-22.04001"), QStringLiteral("-9.424778"),
                                   QStringLiteral("\u221222.04001")})
        text = std::max(text, metrics.horizontalAdvance(longest));
    const QMargins margins = box->textMargins();
    // QLineEdit keeps 2 pixels on each side of the text, and one for the caret.
    const QSize inner(text + margins.left() + margins.right() + 2 * 2 + 1, metrics.height());
    QStyleOptionFrame option;
    option.initFrom(box);
    option.lineWidth = box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, box);
    return box->style()->sizeFromContents(QStyle::CT_LineEdit, &option, inner, box).width();
}

} // namespace

QString exactRowText(double value, bool piAllowed)
{
    auto readsBack = [value](const QString& text) { return plot::readRangeNumber(text) == value; };
    if (piAllowed && value != 0) {
        const double multiple = std::round(value / M_PI * 4) / 4;
        // π, not 1π, as a teacher writes it.
        const QString times = eval::numberText(multiple, QLocale(), 15);
        QString text = multiple == 1    ? QStringLiteral("p")
                       : multiple == -1 ? QStringLiteral("-p")
                                        : times + QLatin1Char('p');
        if (readsBack(text))
            return text;
    }
    for (int digits : {7, 15, 17}) {
        QString text = eval::numberText(value, QLocale(), digits);
        if (readsBack(text))
            return text;
    }
    return eval::numberText(value, QLocale(), 17);
}

RangePanel::RangePanel(model::AppState& state, QWidget* parent) : QWidget(parent), m_state(state)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createRangeGroup());
    layout->addWidget(createAngleGroup());
    layout->addWidget(createDrawingBoxes());
    createNumberFormMenu();
    describeControls();
    connectHandlers();
    reset();
}

QWidget* RangePanel::createRangeGroup()
{
    auto* ranges = new QGroupBox(LoadResString(2019));
    auto* grid = new QGridLayout(ranges);
    const int headers[4] = {2020, 2021, 2022, 2023};
    for (int c = 0; c < 4; ++c) {
        auto* header = new QLabel(LoadResString(headers[c]));
        header->setAlignment(Qt::AlignCenter);
        grid->addWidget(header, 0, c + 1);
    }
    grid->addWidget(new QLabel(QStringLiteral("x")), 1, 0);
    grid->addWidget(new QLabel(QStringLiteral("y")), 2, 0);
    for (int c = 0; c < 4; ++c) {
        m_xRow[c] = named(new PiLineEdit, formNameAt(formName::xRangeRow, c));
        m_yRow[c] = named(new PiLineEdit, formNameAt(formName::yRangeRow, c));
        m_xRow[c]->setRule(plot::acceptsRangeText);
        m_yRow[c]->setRule(plot::acceptsStepText);
        for (PiLineEdit* box : {m_xRow[c], m_yRow[c]}) {
            box->setFixedWidth(rangeBoxWidth(box));
            box->setAlignment(Qt::AlignRight);
            box->setContextMenuPolicy(Qt::CustomContextMenu);
        }
        grid->addWidget(m_xRow[c], 1, c + 1);
        grid->addWidget(m_yRow[c], 2, c + 1);
    }
    // In the fraction form these stand in for the x row's minimum, maximum and step.
    for (int c = 0; c < 3; ++c) {
        m_fractions[c] = named(new FractionInput, formNameAt(formName::fractionInput, c));
        m_fractions[c]->setAllowedValues(kWholes, kNumerators, kDenominators);
        grid->addWidget(m_fractions[c], 1, c + 1);
    }
    return ranges;
}

QWidget* RangePanel::createAngleGroup()
{
    auto* angle = new QGroupBox(LoadResString(2015));
    auto* layout = new QVBoxLayout(angle);
    for (int i = 0; i < 3; ++i) {
        m_angleOptions[i] = named(new QRadioButton(LoadResString(452 + i)),
                                  formNameAt(formName::angleOption, i));
        layout->addWidget(m_angleOptions[i]);
    }
    m_exactTrig = named(new QCheckBox(LoadResString(456)), QLatin1String(formName::exactTrigBox));
    layout->addWidget(m_exactTrig);
    return angle;
}

QWidget* RangePanel::createDrawingBoxes()
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_grid = named(new QCheckBox(tr("Rutnät")), QLatin1String(formName::gridBox));
    m_arrows = named(new QCheckBox(QStringLiteral("X")), QLatin1String(formName::arrowsBox));
    m_tickLabels = named(new QCheckBox(QStringLiteral("Y")), QLatin1String(formName::tickLabelsBox));
    for (QCheckBox* box : {m_grid, m_arrows, m_tickLabels})
        layout->addWidget(box);
    layout->addStretch();
    return row;
}

void RangePanel::createNumberFormMenu()
{
    m_numberForm = new QMenu(this);
    m_numberForm->setObjectName(QLatin1String(formName::numberFormMenu));
    m_decimalForm = m_numberForm->addAction(LoadResString(472));
    m_decimalForm->setObjectName(QLatin1String(formName::decimalForm));
    m_fractionForm = m_numberForm->addAction(LoadResString(473));
    m_fractionForm->setObjectName(QLatin1String(formName::fractionForm));
    auto* form = new QActionGroup(this);
    for (QAction* a : {m_decimalForm, m_fractionForm}) {
        a->setCheckable(true);
        form->addAction(a);
    }
    m_decimalForm->setChecked(true);
}

void RangePanel::describeControls()
{
    for (int c = 0; c < 4; ++c) {
        const int tip = c == 3 ? 465 : 5051 + c;
        describe(m_xRow[c], LoadResString(5043 + c), LoadResString(tip));
        describe(m_yRow[c], LoadResString(5047 + c), LoadResString(tip));
    }
    for (int c = 0; c < 3; ++c) {
        describe(m_fractions[c], LoadResString(5054).arg(LoadResString(5043 + c)), LoadResString(5055));
        m_fractions[c]->nameFields(LoadResString(5043 + c));
    }
    for (int i = 0; i < 3; ++i)
        describe(m_angleOptions[i], plainText(452 + i), LoadResString(5056 + i));
    describe(m_exactTrig, plainText(456), LoadResString(5059));
    describe(m_grid, m_grid->text(), LoadResString(5060));
    describe(m_arrows, LoadResString(2024), LoadResString(2024));
    describe(m_tickLabels, LoadResString(2025), LoadResString(2025));
}

std::vector<QWidget*> RangePanel::tabOrder() const
{
    std::vector<QWidget*> chain;
    for (int c = 0; c < 4; ++c) {
        chain.push_back(m_xRow[c]);
        if (c < 3)
            chain.push_back(m_fractions[c]);
    }
    chain.insert(chain.end(), m_yRow.begin(), m_yRow.end());
    chain.insert(chain.end(), m_angleOptions.begin(), m_angleOptions.end());
    for (QWidget* w : std::initializer_list<QWidget*>{m_exactTrig, m_grid, m_arrows, m_tickLabels})
        chain.push_back(w);
    return chain;
}

void RangePanel::connectHandlers()
{
    for (QCheckBox* box : {m_grid, m_arrows, m_tickLabels})
        connect(box, &QCheckBox::clicked, this, &RangePanel::onDrawingBoxClicked);
    connect(m_exactTrig, &QCheckBox::clicked, this, &RangePanel::onExactTrigClicked);
    const model::AngleUnit units[3] = {model::AngleUnit::Degrees, model::AngleUnit::Radians,
                                       model::AngleUnit::Gradians};
    for (int i = 0; i < 3; ++i)
        connect(m_angleOptions[i], &QRadioButton::clicked, this,
                [this, unit = units[i]] { chooseAngleUnit(unit); });
    connect(m_decimalForm, &QAction::triggered, this, &RangePanel::chooseDecimalForm);
    connect(m_fractionForm, &QAction::triggered, this, &RangePanel::chooseFractionForm);

    // Enter in a range box shows the new range at once.
    for (const auto& row : {m_xRow, m_yRow}) {
        for (PiLineEdit* box : row) {
            connect(box, &QLineEdit::returnPressed, this, &RangePanel::applyAndRedraw);
            connect(box, &QWidget::customContextMenuRequested, this,
                    [this, box](QPoint at) { m_numberForm->popup(box->mapToGlobal(at)); });
        }
    }
    for (FractionInput* fraction : m_fractions)
        for (auto field : {FractionInput::Whole, FractionInput::Numerator, FractionInput::Denominator})
            connect(fraction->field(field), &QLineEdit::returnPressed, this, &RangePanel::applyAndRedraw);
}

plot::RangeRow RangePanel::xTexts() const
{
    plot::RangeRow texts;
    for (int i = 0; i < 4; ++i)
        texts[i] = m_xRow[i]->storedText();
    return texts;
}

plot::RangeRow RangePanel::yTexts() const
{
    plot::RangeRow texts;
    for (int i = 0; i < 4; ++i)
        texts[i] = m_yRow[i]->storedText();
    return texts;
}

void RangePanel::showDecimalRows(const plot::RangeRow& x, const plot::RangeRow& y)
{
    showFractionInputs(false);
    loadRows(x, y);
}

void RangePanel::loadRows(const model::RangePreset& x, const model::RangePreset& y)
{
    for (int i = 0; i < 4; ++i) {
        m_xRow[i]->setText(x[i]);
        m_yRow[i]->setText(y[i]);
    }
}

void RangePanel::showFractionInputs(bool fractions)
{
    for (int i = 0; i < 3; ++i) {
        m_xRow[i]->setVisible(!fractions);
        m_fractions[i]->setVisible(fractions);
    }
    if (fractions) {
        m_fractions[0]->setTexts(QStringLiteral("-3p"), QStringLiteral("0"), QStringLiteral("1"));
        m_fractions[1]->setTexts(QStringLiteral("3p"), QStringLiteral("0"), QStringLiteral("1"));
        m_fractions[2]->setTexts(QStringLiteral("0"), QStringLiteral("p"), QStringLiteral("2"));
    }
}

bool RangePanel::applyToView()
{
    plot::RangeRow x = xTexts();
    const plot::RangeRow y = yTexts();
    for (int i = 0; m_fractions[0]->isVisibleTo(this) && i < 3; ++i) {
        const std::optional<double> value = m_fractions[i]->value();
        x[i] = value ? eval::roundTripText(*value) : m_fractions[i]->writtenText();
    }
    const plot::ViewReading reading = plot::readViewWindow(x, y);
    if (!reading.view) {
        emit statusMessage(reading.problem);
        return false;
    }
    emit statusMessage(QString());
    if (*reading.view == m_state.view)
        return false;
    m_state.view = *reading.view;
    m_state.documentChanged = true;
    return true;
}

void RangePanel::applyAndRedraw()
{
    if (applyToView())
        emit redrawRequested();
}

void RangePanel::fillRedrawOptions(plot::RedrawOptions& options) const
{
    options.grid = m_grid->isChecked();
    options.arrows = m_arrows->isChecked();
    options.tickLabels = m_tickLabels->isChecked();
    options.exactTrig = m_exactTrig->isChecked();
    options.fractionForm = m_fractionForm->isChecked();
}

void RangePanel::showSaved(const model::DrawingDisplay& display, model::AngleUnit unit,
                           const model::ViewWindow& view)
{
    const bool settingUp = m_settingUp;
    m_settingUp = true; // the boxes are set, not clicked: nothing runs its handler
    for (auto [box, on] : {std::pair{m_grid, display.grid}, std::pair{m_arrows, display.axisArrows},
                           std::pair{m_tickLabels, display.tickLabels}})
        box->setChecked(on);
    m_angleOptions[unit == model::AngleUnit::Degrees ? 0 : unit == model::AngleUnit::Radians ? 1 : 2]
        ->setChecked(true);
    m_exactTrig->setEnabled(unit == model::AngleUnit::Radians);
    m_exactTrig->setChecked(display.exactTrig);
    (display.fractionForm ? m_fractionForm : m_decimalForm)->setChecked(true);
    showFractionInputs(false);
    const bool pi = display.exactTrig;
    loadRows({exactRowText(view.XMin, pi), exactRowText(view.XMax, pi), exactRowText(view.XStep, pi),
              exactRowText(view.XTicks, false)},
             {exactRowText(view.YMin, false), exactRowText(view.YMax, false),
              exactRowText(view.YStep, false), exactRowText(view.YTicks, false)});
    m_settingUp = settingUp;
}

void RangePanel::reset()
{
    showFractionInputs(false);
    loadRows(m_state.presetDecimalX, m_state.presetDecimalY);
    applyToView();
    m_exactTrig->setChecked(false);
    m_exactTrig->setEnabled(true);
    m_angleOptions[1]->setChecked(true);
    for (QCheckBox* box : {m_grid, m_arrows, m_tickLabels})
        box->setChecked(true);
}

void RangePanel::focusFirstBox()
{
    m_xRow[0]->setFocus();
}

void RangePanel::rerunExactTrig()
{
    if (m_exactTrig->isEnabled())
        onExactTrigClicked();
}

bool RangePanel::takesPi(const QWidget* widget) const
{
    for (const PiLineEdit* box : m_xRow)
        if (widget == box)
            return true;
    for (const FractionInput* fraction : m_fractions)
        if (widget == fraction)
            return true;
    return false;
}

void RangePanel::onDrawingBoxClicked()
{
    if (!m_settingUp)
        emit redrawRequested();
}

void RangePanel::chooseAngleUnit(model::AngleUnit to)
{
    if (m_settingUp)
        return;
    const model::AngleUnit from = m_state.angleUnit;
    m_state.angleUnit = to;
    m_exactTrig->setEnabled(to == model::AngleUnit::Radians);
    if (to != model::AngleUnit::Radians && m_exactTrig->isChecked()) {
        m_exactTrig->setChecked(false);
        showFractionInputs(false);
    }
    switch (to) {
    case model::AngleUnit::Radians: loadRows(m_state.presetRadiansX, m_state.presetRadiansY); break;
    case model::AngleUnit::Degrees: loadRows(m_state.presetDegreesX, m_state.presetDegreesY); break;
    case model::AngleUnit::Gradians: loadRows(m_state.presetGradiansX, m_state.presetGradiansY); break;
    }
    if (plot::convertMarks(m_state, from, to))
        m_state.documentChanged = true;
    applyToView();
    emit redrawRequested();
}

void RangePanel::onExactTrigClicked()
{
    if (m_settingUp)
        return;
    if (m_exactTrig->isChecked()) {
        if (m_fractionForm->isChecked())
            showFractionInputs(true);
        else
            loadRows(m_state.presetRadiansX, m_state.presetRadiansY);
        // Offer the number form right where the box was ticked.
        if (isVisible())
            m_numberForm->popup(m_exactTrig->mapToGlobal(QPoint(0, m_exactTrig->height())));
    } else {
        showFractionInputs(false);
        loadRows(m_state.presetDecimalX, m_state.presetDecimalY);
    }
    applyToView();
    emit redrawRequested();
}

void RangePanel::chooseDecimalForm()
{
    m_decimalForm->setChecked(true);
    if (m_exactTrig->isChecked()) {
        showFractionInputs(false);
        loadRows(m_state.presetRadiansX, m_state.presetRadiansY);
        applyToView();
    }
    emit redrawRequested();
}

void RangePanel::chooseFractionForm()
{
    m_fractionForm->setChecked(true);
    if (m_exactTrig->isChecked()) {
        showFractionInputs(true);
        applyToView();
    }
    emit redrawRequested();
}

} // namespace curvix::app
