#include "app/pi_line_edit.h"

namespace curvix::app {

namespace {
const QChar kPi(0x03C0);
}

QString piShown(QString stored)
{
    return stored.replace(QLatin1Char('p'), kPi);
}

QString piStored(QString shown)
{
    return shown.replace(kPi, QLatin1Char('p'));
}

PiLineEdit::PiLineEdit(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::textEdited, this, &PiLineEdit::edited);
}

QString PiLineEdit::storedText() const
{
    return piStored(text());
}

void PiLineEdit::setText(const QString& stored)
{
    m_accepted = stored;
    QLineEdit::setText(piShown(stored));
}

void PiLineEdit::append(const QString& stored)
{
    setText(storedText() + stored);
    setCursorPosition(int(text().size()));
    setFocus();
}

void PiLineEdit::edited(const QString& shown)
{
    const QString stored = piStored(shown);
    int caret = cursorPosition();
    if (m_rule && !m_rule(stored)) {
        // Undo the edit: the caret stays where the refused character would have gone.
        caret = std::max(0, caret - int(stored.size() - m_accepted.size()));
        QLineEdit::setText(piShown(m_accepted));
        setCursorPosition(std::min(caret, int(text().size())));
        return;
    }
    m_accepted = stored;
    if (shown.contains(QLatin1Char('p'))) {
        QLineEdit::setText(piShown(stored));
        setCursorPosition(caret);
    }
}

} // namespace curvix::app
