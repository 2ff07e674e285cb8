#include "app/function_box.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

namespace curvix::app {

namespace {

constexpr int kIndentRole = Qt::UserRole + 1;

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
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setItemDelegate(new IndentDelegate(this));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
}

void FunctionBox::setItems(const std::vector<model::FunctionItem>& items)
{
    const QString edited = currentText();
    const QSignalBlocker blocker(this);
    clear();
    for (const model::FunctionItem& item : items) {
        addItem(item.text);
        setItemData(count() - 1, item.indent, kIndentRole);
    }
    setCurrentIndex(-1);
    setEditText(edited);
}

int FunctionBox::indentAt(int row) const
{
    return itemData(row, kIndentRole).toInt();
}

void FunctionBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        event->accept();
        return;
    }
    QComboBox::keyPressEvent(event);
}

} // namespace curvix::app
