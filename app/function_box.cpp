#include "app/function_box.h"

#include "eval/formula.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace curvix::app {

namespace {

constexpr int kIndentRole = Qt::UserRole + 1;
constexpr QChar kShownPi(0x03C0);

QString piShownIn(QString text)
{
    return text.replace(eval::kPiChar, kShownPi);
}

QString piStoredIn(QString text)
{
    return text.replace(kShownPi, eval::kPiChar);
}

class IndentDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem indented(option);
        indented.rect.setLeft(option.rect.left() + indentWidth(option) * level(index));
        QStyledItemDelegate::paint(painter, indented, index);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.rwidth() += indentWidth(option) * level(index);
        return size;
    }

private:
    static int level(const QModelIndex& index) { return index.data(kIndentRole).toInt(); }
    static int indentWidth(const QStyleOptionViewItem& option)
    {
        return option.fontMetrics.horizontalAdvance(QLatin1Char('M')) * 3 / 2;
    }
};

} // namespace

FunctionBox::FunctionBox(QWidget* parent) : QComboBox(parent)
{
    // The formula character for pi, set or typed by the keypad, is shown as π.
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!text.contains(eval::kPiChar))
            return;
        const int caret = lineEdit()->cursorPosition();
        lineEdit()->setText(piShownIn(text));
        lineEdit()->setCursorPosition(caret);
    });
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // Completing a typed x to a drawn x^3 would draw x^3 again on Enter.
    setCompleter(nullptr);
    setItemDelegate(new IndentDelegate(this));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
}

void FunctionBox::setItems(const std::vector<model::FunctionItem>& items,
                           const std::vector<QColor>& colors)
{
    const QString edited = currentText();
    const QSignalBlocker blocker(this);
    clear();
    for (std::size_t i = 0; i < items.size(); ++i) {
        QPixmap swatch(12, 12);
        swatch.fill(i < colors.size() ? colors[i] : QColor(Qt::black));
        addItem(QIcon(swatch), piShownIn(items[i].text));
        setItemData(count() - 1, items[i].indent, kIndentRole);
    }
    setCurrentIndex(-1);
    setEditText(edited);
}

int FunctionBox::indentAt(int row) const
{
    return itemData(row, kIndentRole).toInt();
}

QString FunctionBox::storedText() const
{
    return piStoredIn(currentText());
}

QString FunctionBox::storedItemText(int row) const
{
    return piStoredIn(itemText(row));
}

void FunctionBox::commitText()
{
    // Setting the text forgets the typing, so that Undo now undoes the drawing's last change.
    const QString text = lineEdit()->text();
    lineEdit()->setText(text);
    lineEdit()->selectAll();
}

bool FunctionBox::event(QEvent* event)
{
    // The box keeps Undo and Redo only while it has typing of its own to undo or redo; else
    // the keys reach the window's commands.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->matches(QKeySequence::Undo) && !lineEdit()->isUndoAvailable()) ||
            (key->matches(QKeySequence::Redo) && !lineEdit()->isRedoAvailable()))
            return true;
    }
    return QComboBox::event(event);
}

void FunctionBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Escape)
        emit escapePressed();
    QComboBox::keyPressEvent(event);
}

} // namespace curvix::app
