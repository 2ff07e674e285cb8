#include "app/fraction_input.h"

#include "app/pi_line_edit.h"
#include "eval/formula.h"
#include "plot/coordinates.h"

#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QRegularExpression>

#include <cmath>

namespace curvix::app {

namespace {

bool matches(const char* pattern, const QString& text)
{
    return QRegularExpression(QLatin1String(pattern)).match(text).hasMatch();
}

} // namespace

bool acceptsWholePart(const QString& text)
{
    // 0, or a whole multiple of pi such as p, -p, 2p, -3p; -0 to write a negative fraction
    // alone; "-" while one is being typed.
    return matches("^(-?0|-?\\d?p|-|-?\\d)$", text) || text.isEmpty();
}

bool acceptsNumerator(const QString& text)
{
    return matches("^(\\d{0,2}p|\\d{1,2})$", text) || text.isEmpty();
}

bool acceptsDenominator(const QString& text)
{
    return matches("^\\d{1,2}$", text) || text.isEmpty();
}

FractionInput::FractionInput(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    const PiLineEdit::Rule rules[3] = {acceptsWholePart, acceptsNumerator, acceptsDenominator};
    for (int i = 0; i < 3; ++i) {
        m_boxes[i] = new QComboBox(this);
        m_boxes[i]->setEditable(true);
        m_boxes[i]->setInsertPolicy(QComboBox::NoInsert);
        m_edits[i] = new PiLineEdit(m_boxes[i]);
        m_edits[i]->setRule(rules[i]);
        m_edits[i]->setAlignment(Qt::AlignCenter);
        m_boxes[i]->setLineEdit(m_edits[i]);
        // The box or its line edit may hold the focus, depending on how it was reached.
        m_boxes[i]->installEventFilter(this);
        m_edits[i]->installEventFilter(this);
        connect(m_boxes[i], &QComboBox::textActivated, m_edits[i],
                [edit = m_edits[i]](const QString& shown) { edit->setText(piStored(shown)); });
    }
    // Editing the fraction, or leaving an empty whole part, makes the whole part "0".
    auto zeroWhole = [this] {
        if (m_edits[Whole]->storedText().isEmpty())
            m_edits[Whole]->setText(QStringLiteral("0"));
    };
    connect(m_edits[Numerator], &QLineEdit::textEdited, this, zeroWhole);
    connect(m_edits[Denominator], &QLineEdit::textEdited, this, zeroWhole);
    connect(m_edits[Whole], &QLineEdit::editingFinished, this, zeroWhole);
    auto* bar = new QFrame(this);
    bar->setFrameShape(QFrame::HLine);
    layout->addWidget(m_boxes[Whole], 0, 0, 3, 1, Qt::AlignVCenter);
    layout->addWidget(m_boxes[Numerator], 0, 1);
    layout->addWidget(bar, 1, 1);
    layout->addWidget(m_boxes[Denominator], 2, 1);
}

void FractionInput::setTexts(const QString& whole, const QString& numerator,
                             const QString& denominator)
{
    m_edits[Whole]->setText(whole);
    m_edits[Numerator]->setText(numerator);
    m_edits[Denominator]->setText(denominator);
}

QString FractionInput::text(Field field) const
{
    return m_edits[field]->storedText();
}

void FractionInput::setAllowedValues(const QStringList& wholes, const QStringList& numerators,
                                     const QStringList& denominators)
{
    const QStringList* lists[3] = {&wholes, &numerators, &denominators};
    for (int i = 0; i < 3; ++i) {
        const QString kept = m_edits[i]->storedText();
        m_boxes[i]->clear();
        for (const QString& value : *lists[i])
            m_boxes[i]->addItem(piShown(value));
        m_edits[i]->setText(kept);
    }
}

QString FractionInput::writtenText() const
{
    return piShown(text(Whole) + QLatin1Char(' ') + text(Numerator) + QLatin1Char('/') +
                   text(Denominator));
}

void FractionInput::nameFields(const QString& valueName)
{
    const QString parts[3] = {tr("%1, whole multiple of π"), tr("%1, numerator"),
                              tr("%1, denominator")};
    for (int i = 0; i < 3; ++i) {
        m_boxes[i]->setAccessibleName(parts[i].arg(valueName));
        m_edits[i]->setAccessibleName(parts[i].arg(valueName));
    }
}

std::optional<double> FractionInput::value() const
{
    QString whole = text(Whole);
    if (whole.isEmpty())
        whole = QStringLiteral("0");
    const std::optional<double> w = plot::readRangeNumber(whole);
    const QString numeratorText = text(Numerator);
    if (numeratorText.isEmpty() || numeratorText == QLatin1String("0"))
        return w;
    const std::optional<double> n = plot::readRangeNumber(numeratorText);
    const std::optional<double> d = plot::readRangeNumber(text(Denominator));
    if (!w || !n || !d || *d == 0)
        return std::nullopt;
    // A negative whole part carries its sign into the fraction: -p and p/2 make -3π/2.
    return std::signbit(*w) ? *w - *n / *d : *w + *n / *d;
}

bool FractionInput::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        for (int i = 0; i < 3; ++i)
            if (watched == m_edits[i] || watched == m_boxes[i])
                m_active = Field(i);
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace curvix::app
