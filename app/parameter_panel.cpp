#include "app/parameter_panel.h"

#include "app/form_names.h"
#include "app/parameter_dialog.h"
#include "app/tool_icons.h"
#include "eval/numtext.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cmath>

namespace curvix::app {

namespace {

// A sweep takes about 30 steps a second and crosses the whole range in about 4 seconds.
constexpr int kTickMs = 33;
constexpr int kTicksPerSweep = 120;
// More slider positions than this would only slow the slider down: the step is then coarser.
constexpr double kMostPositions = 1e6;
// A value box wider than this many decimals would crowd the slider out of its row.
constexpr int kMostDecimals = 6;

// The decimals that show this number exactly, at most 10.
int decimalsOf(double number)
{
    for (int d = 0; d < 10; ++d) {
        const double scaled = number * std::pow(10.0, d);
        if (std::abs(scaled - std::round(scaled)) < 1e-9 * std::max(1.0, std::abs(scaled)))
            return d;
    }
    return 10;
}

// The slider's step: the parameter's own, or coarser where it would give too many positions.
double sliderStep(const eval::Parameter& p)
{
    const double range = p.maximum - p.minimum;
    return range / p.step > kMostPositions ? range / kMostPositions : p.step;
}

// The slider counts whole steps from the minimum; when the range is no whole number of steps
// (0 to 1 in steps of 0.3) one more position, the last, is the maximum.
int lastPosition(const eval::Parameter& p)
{
    const double steps = (p.maximum - p.minimum) / sliderStep(p);
    return int(std::clamp(std::ceil(steps * (1 - 1e-9)), 1.0, kMostPositions));
}

double valueAt(const eval::Parameter& p, int position)
{
    if (position >= lastPosition(p))
        return p.maximum;
    // Rounded to the decimals of the step, so that 0.1 steps from -5 give -4.7 and not
    // -4.699999999999999.
    const double scale = std::pow(10.0, std::max(decimalsOf(p.step), decimalsOf(p.minimum)));
    const double value = std::round((p.minimum + position * sliderStep(p)) * scale) / scale;
    return std::clamp(value, p.minimum, p.maximum);
}

int positionOf(const eval::Parameter& p, double value)
{
    const double steps = (value - p.minimum) / sliderStep(p);
    return int(std::clamp(std::round(steps), 0.0, double(lastPosition(p))));
}

QIcon crossIcon(const QColor& ink)
{
    return paintedIcon(16, [ink](QPainter& p) {
        p.setPen(QPen(ink, 1.8, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(4, 4), QPointF(12, 12));
        p.drawLine(QPointF(12, 4), QPointF(4, 12));
    });
}

// A pencil: a slanted body, its tip, and a line to write on.
QIcon pencilIcon(const QColor& ink)
{
    return paintedIcon(16, [ink](QPainter& p) {
        p.setPen(QPen(ink, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF body[] = {{10.5, 2.5}, {13.5, 5.5}, {6, 13}, {3, 13}, {3, 10}};
        p.drawPolygon(body, 5);
        p.drawLine(QPointF(9, 4), QPointF(12, 7));
    });
}

} // namespace

struct ParameterPanel::Row {
    eval::Parameter parameter;
    QWidget* box = nullptr; // holds the row's controls; deleting it deletes them
    QLabel* name = nullptr;
    QDoubleSpinBox* value = nullptr;
    QSlider* slider = nullptr;
    QToolButton* play = nullptr;
    QToolButton* edit = nullptr;
    QToolButton* remove = nullptr;
    int direction = 1; // of a sweep: +1 up, -1 down
    int ticks = 0;     // of the timer since the sweep last moved

    ~Row() { delete box; }
};

QString nextFreeParameterName(const eval::ParameterList& taken, const QString& variable)
{
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        QString name(QLatin1Char{letter});
        if (eval::isParameterName(name, variable) && eval::parameterIndex(taken, name) < 0)
            return name;
    }
    return QString();
}

ParameterPanel::ParameterPanel(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("parameterPanel"));
    auto* layout = new QVBoxLayout(this);
    m_rowLayout = new QVBoxLayout;
    m_rowLayout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(m_rowLayout);
    m_placeholder = named(new QLabel(tr("No parameters. Type a formula with a letter such as a, "
                                        "or press Add.")),
                          QStringLiteral("parameterPlaceholder"));
    m_placeholder->setWordWrap(true);
    m_placeholder->setEnabled(false); // drawn greyed, as a placeholder text is
    layout->addWidget(m_placeholder);
    m_add = named(new QPushButton(tr("&Add...")), QStringLiteral("addParameter"));
    describe(m_add, tr("Add a parameter"));
    connect(m_add, &QPushButton::clicked, this, [this] { openEditor(nullptr); });
    auto* addRow = new QHBoxLayout;
    addRow->addWidget(m_add);
    addRow->addStretch();
    layout->addLayout(addRow);
    layout->addStretch();

    m_playTimer = new QTimer(this);
    m_playTimer->setInterval(kTickMs);
    connect(m_playTimer, &QTimer::timeout, this, &ParameterPanel::playTick);
}

ParameterPanel::~ParameterPanel() = default;

void ParameterPanel::setVariable(const QString& variable)
{
    m_variable = variable;
}

bool ParameterPanel::isPlaying(int index) const
{
    return index >= 0 && index < int(m_rows.size()) && m_rows[index]->play->isChecked();
}

void ParameterPanel::setParameters(const eval::ParameterList& parameters)
{
    // Keep the rows whose name stays, in the new order; the others go. A slider's move
    // changes only values: the rows keep their places, and nothing is laid out again.
    QStringList before;
    for (const auto& row : m_rows)
        before << row->parameter.name;
    std::vector<std::unique_ptr<Row>> kept;
    for (const eval::Parameter& parameter : parameters) {
        auto same = std::find_if(m_rows.begin(), m_rows.end(), [&parameter](const auto& row) {
            return row && row->parameter.name == parameter.name;
        });
        if (same != m_rows.end()) {
            kept.push_back(std::move(*same));
            showInRow(*kept.back(), parameter);
        } else {
            kept.emplace_back(createRow(parameter));
        }
    }
    m_rows = std::move(kept); // the rows left behind are deleted here, their sweep with them
    if (before != eval::parameterNames(parameters))
        placeRows();
    const auto playing = [](const auto& row) { return row->play->isChecked(); };
    if (std::none_of(m_rows.begin(), m_rows.end(), playing))
        m_playTimer->stop();
}

bool ParameterPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End: event->accept(); return true;
        default: break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

ParameterPanel::Row* ParameterPanel::createRow(const eval::Parameter& parameter)
{
    auto* row = new Row;
    row->box = new QWidget(this);
    auto* layout = new QHBoxLayout(row->box);
    layout->setContentsMargins(0, 0, 0, 0);
    row->name = new QLabel(parameter.name + QStringLiteral(" ="));
    row->value = named(new QDoubleSpinBox, QStringLiteral("parameterValue"));
    row->value->setKeyboardTracking(false); // a value is sent when typed in full, not per digit
    row->value->setAlignment(Qt::AlignRight);
    row->value->setAccelerated(true);
    row->name->setBuddy(row->value);
    row->slider = named(new QSlider(Qt::Horizontal), QStringLiteral("parameterSlider"));
    row->slider->setSingleStep(1);
    row->slider->setPageStep(10);
    row->slider->setMinimumWidth(140); // fine enough to drag by hand
    row->slider->installEventFilter(this);
    row->play = named(new QToolButton, QStringLiteral("parameterPlay"));
    row->play->setCheckable(true);
    row->play->setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    row->edit = named(new QToolButton, QStringLiteral("parameterEdit"));
    setThemedIcon(row->edit, pencilIcon);
    row->remove = named(new QToolButton, QStringLiteral("parameterRemove"));
    setThemedIcon(row->remove, crossIcon);
    layout->addWidget(row->name);
    layout->addWidget(row->value);
    layout->addWidget(row->slider, 1);
    for (QToolButton* button : {row->play, row->edit, row->remove}) {
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(button);
    }
    const QString& n = parameter.name;
    describe(row->value, tr("Value of %1").arg(n));
    describe(row->slider, tr("Slider for %1").arg(n));
    describe(row->play, tr("Play %1").arg(n), tr("Sweep %1 between its bounds and back").arg(n));
    describe(row->edit, tr("Edit %1").arg(n), tr("Value, bounds and step of %1").arg(n));
    describe(row->remove, tr("Remove %1").arg(n));
    showInRow(*row, parameter, true);

    connect(row->slider, &QSlider::valueChanged, this,
            [this, row](int position) { sliderMoved(*row, position); });
    connect(row->slider, &QSlider::sliderPressed, this, [this, row] { stopPlaying(*row); });
    // The value is where the slider was let go, whatever the drawing last answered.
    connect(row->slider, &QSlider::sliderReleased, this, [this, row] {
        row->parameter.value = valueAt(row->parameter, row->slider->value());
        emit valueChanged(indexOf(row), row->parameter.value, false);
    });
    connect(row->value, &QDoubleSpinBox::valueChanged, this,
            [this, row](double v) { typedValue(*row, v); });
    connect(row->play, &QToolButton::toggled, this, [this, row](bool on) { togglePlay(*row, on); });
    connect(row->edit, &QToolButton::clicked, this, [this, row] { openEditor(row); });
    connect(row->remove, &QToolButton::clicked, this,
            [this, row] { emit removeRequested(indexOf(row)); });
    return row;
}

// Sets only what changed, with the controls' signals held back: the panel shows the
// drawing, it does not answer it. A held slider keeps its place under the mouse.
void ParameterPanel::showInRow(Row& row, const eval::Parameter& parameter, bool fresh)
{
    const eval::Parameter& was = row.parameter;
    const int valueDecimals = std::min(decimalsOf(parameter.value), kMostDecimals);
    const bool bounds = fresh || was.minimum != parameter.minimum ||
                        was.maximum != parameter.maximum || was.step != parameter.step ||
                        valueDecimals > row.value->decimals();
    row.parameter = parameter;
    const QSignalBlocker holdValue(row.value);
    const QSignalBlocker holdSlider(row.slider);
    if (bounds) {
        const int decimals = std::min(kMostDecimals,
                                      std::max({decimalsOf(parameter.step), valueDecimals,
                                                decimalsOf(parameter.minimum),
                                                decimalsOf(parameter.maximum)}));
        row.value->setDecimals(decimals);
        row.value->setRange(parameter.minimum, parameter.maximum);
        row.value->setSingleStep(parameter.step);
        row.slider->setRange(0, lastPosition(parameter));
        row.slider->setToolTip(tr("From %1 to %2 in steps of %3")
                                   .arg(eval::numberText(parameter.minimum),
                                        eval::numberText(parameter.maximum),
                                        eval::numberText(parameter.step)));
    }
    if (row.slider->isSliderDown())
        return; // the box shows the slider's value until it is let go
    if (row.value->value() != parameter.value)
        row.value->setValue(parameter.value);
    row.slider->setValue(positionOf(parameter, parameter.value));
}

void ParameterPanel::placeRows()
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_rowLayout->removeWidget(m_rows[i]->box);
        m_rowLayout->insertWidget(int(i), m_rows[i]->box);
    }
    m_placeholder->setVisible(m_rows.empty());
    // The same widths in every row, so that the sliders stand in one column.
    int nameWidth = 0;
    int valueWidth = 0;
    for (const auto& row : m_rows) {
        row->name->setMinimumWidth(0);
        row->value->setMinimumWidth(0);
        nameWidth = std::max(nameWidth, row->name->sizeHint().width());
        valueWidth = std::max(valueWidth, row->value->sizeHint().width());
    }
    for (const auto& row : m_rows) {
        row->name->setMinimumWidth(nameWidth);
        row->value->setMinimumWidth(valueWidth);
    }
    // Tab goes along each row and down the rows, then to Add.
    QWidget* previous = nullptr;
    for (const auto& row : m_rows) {
        const std::array<QWidget*, 5> controls{row->value, row->slider, row->play, row->edit,
                                               row->remove};
        for (QWidget* w : controls) {
            if (previous)
                setTabOrder(previous, w);
            previous = w;
        }
    }
    if (previous)
        setTabOrder(previous, m_add);
}

int ParameterPanel::indexOf(const Row* row) const
{
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].get() == row)
            return int(i);
    return -1;
}

void ParameterPanel::sliderMoved(Row& row, int position)
{
    row.parameter.value = valueAt(row.parameter, position);
    {
        const QSignalBlocker hold(row.value);
        row.value->setValue(row.parameter.value);
    }
    emit valueChanged(indexOf(&row), row.parameter.value, row.slider->isSliderDown());
}

void ParameterPanel::typedValue(Row& row, double value)
{
    stopPlaying(row);
    row.parameter.value = value;
    {
        const QSignalBlocker hold(row.slider);
        row.slider->setValue(positionOf(row.parameter, value));
    }
    emit valueChanged(indexOf(&row), value, false);
}

void ParameterPanel::togglePlay(Row& row, bool on)
{
    row.play->setIcon(style()->standardIcon(on ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    const QString& name = row.parameter.name;
    describe(row.play, on ? tr("Stop %1").arg(name) : tr("Play %1").arg(name));
    if (on) {
        if (!m_playTimer->isActive())
            m_playTimer->start();
        return;
    }
    // The sweep ends where it is: that value is the one to keep.
    emit valueChanged(indexOf(&row), row.parameter.value, false);
}

void ParameterPanel::stopPlaying(Row& row)
{
    if (row.play->isChecked())
        row.play->setChecked(false);
}

// Few positions are each held for some ticks, many are passed in strides, so that a sweep
// takes about the same time whatever the step.
int ParameterPanel::nextPlayPosition(Row& row)
{
    const eval::Parameter& p = row.parameter;
    const int last = lastPosition(p);
    const int position = positionOf(p, p.value);
    if (++row.ticks < std::max(1, int(std::lround(double(kTicksPerSweep) / last))))
        return position;
    row.ticks = 0;
    const int stride = std::max(1, int(std::lround(double(last) / kTicksPerSweep)));
    int next = position + row.direction * stride;
    // Turn at a bound only once it is reached, so that every sweep shows both ends.
    if ((next > last && position == last) || (next < 0 && position == 0)) {
        row.direction = -row.direction;
        next = position + row.direction * stride;
    }
    return std::clamp(next, 0, last);
}

void ParameterPanel::playTick()
{
    bool any = false;
    for (const auto& row : m_rows) {
        if (!row->play->isChecked())
            continue;
        any = true;
        const int position = nextPlayPosition(*row);
        if (position == positionOf(row->parameter, row->parameter.value))
            continue;
        row->parameter.value = valueAt(row->parameter, position);
        {
            const QSignalBlocker holdValue(row->value);
            const QSignalBlocker holdSlider(row->slider);
            row->slider->setValue(position);
            row->value->setValue(row->parameter.value);
        }
        emit valueChanged(indexOf(row.get()), row->parameter.value, true);
    }
    if (!any)
        m_playTimer->stop();
}

void ParameterPanel::openEditor(Row* row)
{
    eval::Parameter shown;
    if (row) {
        shown = row->parameter;
    } else {
        eval::ParameterList all;
        for (const auto& r : m_rows)
            all.push_back(r->parameter);
        shown.name = nextFreeParameterName(all, m_variable);
    }
    auto* dialog = new ParameterDialog(shown, row == nullptr, this);
    QStringList taken;
    for (const auto& r : m_rows)
        taken << r->parameter.name;
    dialog->setTakenNames(m_variable, taken);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The row may go while the dialog is open: it is found again by its name.
    const bool adding = row == nullptr;
    connect(dialog, &QDialog::accepted, this, [this, dialog, adding, name = shown.name] {
        if (adding) {
            emit addRequested(dialog->parameter());
            return;
        }
        // Found before it is sent: the answer rebuilds the rows.
        const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                      [&name](const auto& r) { return r->parameter.name == name; });
        if (row != m_rows.end())
            emit changeRequested(indexOf(row->get()), dialog->parameter());
    });
    dialog->open();
}

} // namespace curvix::app
