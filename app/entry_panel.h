#pragma once

#include "eval/parameters.h"

#include "model/graph.h"

#include <QObject>
#include <QString>

#include <array>
#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class QWidget;

namespace curvix::app {

class FunctionBox;

// Where functions are typed: the label box, the function box and Draw (the entry row
// above the plot), and beside the plot the label text, the typeset preview of the
// function and the keypad. The keypad types into the text box that had the focus last.
class EntryPanel : public QObject {
    Q_OBJECT
public:
    explicit EntryPanel(QWidget* window);

    QWidget* entryRow() const { return m_entryRow; }
    QWidget* sidePanel() const { return m_sidePanel; }

    QString functionText() const;
    void setFunctionText(const QString& text);
    // The drawn text stays for editing, selected so that typing starts the next function.
    void selectFunctionText();
    void clearFunctionText();
    // Editing a drawn function in place: the box holds its text, Draw reads Replace and a
    // note says what Enter and Escape do. editedText() is the function being replaced, ""
    // while not editing. Escape gives the box its text back and ends editing.
    void beginEditing(const QString& text);
    QString editedText() const { return m_editedText; }
    void endEditing();
    void showItems(const std::vector<model::FunctionItem>& items, const std::vector<QColor>& colors);
    // The drop-down position (1-based) of the function in the box: the selected item when
    // it shows the text, else the first item with that text, -1 when none.
    int itemPosition(const std::vector<model::FunctionItem>& items) const;
    void pickItem(const QString& text, int row);

    // The drawing's parameters, which the formula preview sets as symbols.
    void setParameters(const eval::ParameterList& parameters);

    // The label as typed ("f(x)"), and whether it names a variable.
    QString labelText() const;
    bool labelIsValid() const;
    // Shows why a typed label is refused and keeps the focus in its box until mended.
    void validateLabel();

    // Which other text boxes take π from the keypad (range boxes): their owner decides.
    void setPiTargets(std::function<bool(const QWidget*)> takesPi) { m_takesPi = std::move(takesPi); }
    void pressToken(int index);
    // While a symbolic calculation runs, the function box waits for its answer.
    void setBusy(bool busy);
    void focusFunctionBox();
    void focusLabelText();
    QFont labelFont() const;
    // The tab order of the row, then the label text and the keypad in the order of its grid.
    std::vector<QWidget*> entryTabOrder() const;
    std::vector<QWidget*> sideTabOrder() const;

signals:
    // Enter in the function box, or Draw.
    void drawRequested();
    void statusMessage(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createEntryRow();
    void createSidePanel();
    void describeControls();
    void onFocusChanged(QWidget* now);
    void showPreview();

    QWidget* m_window;
    QWidget* m_entryRow = nullptr;
    QWidget* m_sidePanel = nullptr;
    QLineEdit* m_labelEdit = nullptr;
    QLabel* m_editingNote = nullptr;
    QString m_editedText;
    FunctionBox* m_functionBox = nullptr;
    QPushButton* m_drawButton = nullptr;
    QLineEdit* m_labelText = nullptr;
    // The function of the box, typeset, to drag onto the plot as a formula picture.
    QLabel* m_preview = nullptr;
    QString m_previewFormula;
    std::array<QToolButton*, 32> m_keys{};
    // The text box that had the focus last; the keypad types into it.
    QWidget* m_keypadTarget = nullptr;
    std::function<bool(const QWidget*)> m_takesPi;
    QMetaObject::Connection m_focusConnection;
    eval::ParameterList m_parameters;
};

} // namespace curvix::app
