#pragma once

#include "model/graph.h"

#include <QComboBox>

#include <vector>

namespace curvix::app {

// The function box: an editable combo box whose drop-down shows the functions as a tree,
// each item indented by its level. Enter in it is reported, never inserted as an item.
// Pi is shown as π; the texts it gives and takes hold the formula character for it.
class FunctionBox : public QComboBox {
    Q_OBJECT
public:
    explicit FunctionBox(QWidget* parent = nullptr);

    // Shows these items, each with a swatch of its curve's colour; the text being edited
    // stays as it is.
    void setItems(const std::vector<model::FunctionItem>& items, const std::vector<QColor>& colors);
    int indentAt(int row) const;
    // The text being edited, and an item's text, with the formula character for pi.
    QString storedText() const;
    QString storedItemText(int row) const;

    // The text stays, selected, and its typing is forgotten: a drawn function is done with.
    void commitText();

signals:
    void enterPressed();
    void escapePressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace curvix::app
