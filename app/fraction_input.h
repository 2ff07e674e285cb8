#pragma once

#include <QWidget>

#include <optional>

class QComboBox;

namespace curvix::app {

class PiLineEdit;

// A range value written as a whole part and a fraction of pi: "-2p" and "p"/"2" make
// -3π/2. Each field offers a list of usual values and takes typed ones.
class FractionInput : public QWidget {
    Q_OBJECT
public:
    enum Field { Whole, Numerator, Denominator };

    explicit FractionInput(QWidget* parent = nullptr);

    void setTexts(const QString& whole, const QString& numerator, const QString& denominator);
    QString text(Field field) const;
    PiLineEdit* field(Field field) const { return m_edits[field]; }
    // The field being edited, or the one edited last.
    Field activeField() const { return m_active; }
    // Offers these values in the three fields' lists.
    void setAllowedValues(const QStringList& wholes, const QStringList& numerators,
                          const QStringList& denominators);
    // The three fields as the user reads them, for messages: "-π π/2".
    QString writtenText() const;
    // Names the three fields for a screen reader after the value they make: "x minimum,
    // whole multiple of π", "x minimum, numerator", "x minimum, denominator".
    void nameFields(const QString& valueName);
    // The value in world units; nothing for an incomplete fraction.
    std::optional<double> value() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* m_boxes[3] = {};
    PiLineEdit* m_edits[3] = {};
    Field m_active = Whole;
};

// The acceptance rules of the three fields while typing.
bool acceptsWholePart(const QString& text);
bool acceptsNumerator(const QString& text);
bool acceptsDenominator(const QString& text);

} // namespace curvix::app
