#pragma once

#include "model/app_state.h"
#include "model/drawing.h"
#include "plot/range_rows.h"
#include "plot/render.h"

#include <QWidget>

#include <array>

class QAction;
class QCheckBox;
class QMenu;
class QRadioButton;

namespace curvix::app {

class FractionInput;
class PiLineEdit;

// The shortest text of a range box that reads back as exactly this value, "p" standing for
// pi: a multiple of pi where piAllowed, else a decimal of as few digits as will do.
QString exactRowText(double value, bool piAllowed);

// The range rows (x and y: minimum, maximum, step, ticks), the fraction form that stands
// in for the x row's numbers, the angle unit, exact trig and the drawing check boxes.
// It reads its rows into the state's view and says when the plot must be drawn again.
class RangePanel : public QWidget {
    Q_OBJECT
public:
    explicit RangePanel(model::AppState& state, QWidget* parent = nullptr);

    // Raised at start and by New, lowered by the next full redraw: while the window sets
    // itself up, the options and check boxes change nothing.
    void setSettingUp(bool settingUp) { m_settingUp = settingUp; }

    plot::RangeRow xTexts() const;
    plot::RangeRow yTexts() const;
    // Shows these rows in the decimal boxes (a zoom writes its range in decimals).
    void showDecimalRows(const plot::RangeRow& x, const plot::RangeRow& y);
    // Reads the rows into the view; a refusal goes to the status bar and the last good
    // view stays. Returns whether the view changed (a change of the drawing).
    bool applyToView();
    // The switches of the redraw that this panel holds.
    void fillRedrawOptions(plot::RedrawOptions& options) const;
    // Shows a saved drawing's switches, angle unit and view, without running the handlers
    // of the boxes; the rows read back as exactly that view.
    void showSaved(const model::DrawingDisplay& display, model::AngleUnit unit,
                   const model::ViewWindow& view);
    // Back to the state of a new drawing: decimal preset, radians, every box ticked.
    void reset();
    void focusFirstBox();
    // The x row with its fraction fields, the y row, the angle options and the check boxes.
    std::vector<QWidget*> tabOrder() const;
    // The exact-trig handler run again for the box as it stands (its keyboard shortcut).
    void rerunExactTrig();
    // The line edits the keypad's π key may type into (x row and fraction fields).
    bool takesPi(const QWidget* widget) const;

    void chooseAngleUnit(model::AngleUnit unit);
    void chooseDecimalForm();
    void chooseFractionForm();

signals:
    void redrawRequested();
    void statusMessage(const QString& text);

private:
    QWidget* createRangeGroup();
    QWidget* createAngleGroup();
    QWidget* createDrawingBoxes();
    void createNumberFormMenu();
    void describeControls();
    void connectHandlers();
    void loadRows(const model::RangePreset& x, const model::RangePreset& y);
    void showFractionInputs(bool fractions);
    void onExactTrigClicked();
    void onDrawingBoxClicked();
    void applyAndRedraw();

    model::AppState& m_state;
    bool m_settingUp = true;
    std::array<PiLineEdit*, 4> m_xRow{};
    std::array<PiLineEdit*, 4> m_yRow{};
    std::array<FractionInput*, 3> m_fractions{};
    std::array<QRadioButton*, 3> m_angleOptions{};
    QCheckBox* m_exactTrig = nullptr;
    QCheckBox* m_grid = nullptr;
    QCheckBox* m_arrows = nullptr;
    QCheckBox* m_tickLabels = nullptr;
    // The number form of exact trig, offered on the range boxes.
    QMenu* m_numberForm = nullptr;
    QAction* m_decimalForm = nullptr;
    QAction* m_fractionForm = nullptr;
};

} // namespace curvix::app
