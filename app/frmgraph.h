#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include "plot/render.h"

#include <QMainWindow>
#include <QPointer>

#include <array>
#include <vector>

class QAction;
class QMimeData;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QTimer;
class QToolButton;

namespace curvix::app {

class FractionInput;
class FunctionBox;
class PiLineEdit;
class PlotFrame;
class PlotLabel;
class PlotWidget;
class ZoomBoxWidget;
class frmsettings;
class frmtangent;

// The main window: the function box, the range rows, the tool buttons, the menus and the
// plot area. Its handlers are short; the work is done by the procedures of the core.
class frmgraph : public QMainWindow {
    Q_OBJECT
public:
    explicit frmgraph(model::Prompter& prompter, QWidget* parent = nullptr);
    ~frmgraph() override;

    model::AppState& state() { return m_state; }
    const model::AppState& state() const { return m_state; }
    PlotWidget* plotArea() const { return Picture1; }

    // The full redraw of the plot area; every change ends in one call of it.
    void frmPicture1_Resize();
    // The function box's key handler: Enter adds the typed function.
    void imgcombfunc_KeyPress(int keyCode);
    void cmdtoken_Click(int index);
    void Option1_Click(int index);
    void Check1_Click();
    void mnunew_Click();
    void mnupop1_Click();
    void mnupop21_Click();
    void mnupop22_Click();
    // Zooms into the box (0), out (1, one step or to the beginning) or puts the box away
    // (-1); returns the number of saved steps.
    int zoom(int mode, bool toBeginning);
    void mnuzoomin_Click();
    void mnucolgrid_Click();
    void mnucolaxis_Click();
    void mnucolfunc_Click();
    void mnucolwind_Click();
    void mnucolfill_Click();
    void mnufill_Click();
    void mnufontsize_Click();
    // The right-button release on the plot: remembers where, for the fill, and offers the
    // tools menu there.
    void Picture1_RightButtonUp(QPointF at);
    // Tangent mode: a left click on the plot puts a tangent on the nearest curve there.
    void mnutangent_Click(bool on);
    void removeTangents();
    // The trace: on for the function in the box (else the first); it walks about 200 steps
    // across the view, by the step key, the arrow keys, playing, or a click on the plot.
    void mnutrace_Click(bool on);
    void traceStep(int direction);
    void tracePlay(bool playing);
    bool tracePlaying() const;
    // The derivative and primitive commands on the function in the function box: the answer
    // goes into the box, waiting to be drawn linked to its source.
    void mnupopderiv_Click();
    void mnupopprim_Click();
    void mnucopy_Click();
    void mnuprint_Click();
    // Save As; false when the user cancelled or the file could not be written.
    bool mnusaveas_Click();
    // A left-button press on the plot that no tool claims drags the picture out.
    void Picture1_LeftButtonDown(QPointF at);
    // The picture as drag data, labels burnt in; the plot is drawn again afterwards.
    QMimeData* dragData();
    // Labels lying over the plot (text arrays 1 and 2, and formula pictures). Deleting one
    // leaves its place in the array empty.
    QLabel* addPlotLabel(int array, const QString& text, QPointF at);
    QLabel* addPlotPicture(const QString& formula, QPointF at);
    // A double-click on a curve drops a label with the coordinates of its nearest point.
    void Picture1_DblClick(QPointF at);
    // Alt+Q: the formula of the last formula picture (or of the preview) is edited.
    void editFormulaObject();
    QPointF fillAnchor() const { return m_fillAnchor; }
    // The derivative and tangent window, made on first use; also the guide-line editor.
    frmtangent* tangentWindow();
    // Opens the demonstration for the function in the function box ("Ingen aktiv
    // funktion" when it is not drawn).
    void openDemonstration();
    // The activation handler: when the demonstration window has asked for it, clears the
    // status bar, shows the demonstration buttons, builds the demonstration's curves and
    // starts playing. Otherwise it does nothing.
    void Form_Activate();
    // One step of the demonstration: the tangent moves to the next x.
    void demoStep();
    void demoPlay(bool playing);
    // Ends the demonstration: the tangent goes, the derivative's graph stays.
    void demoStop();
    bool demoPlaying() const { return m_demo.playing; }
    bool demoRunning() const { return m_demo.running; }
    // How many full redraws have run: lets tests see that a click redrew nothing.
    int redrawCount() const { return m_redraws; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void createWidgets();
    QWidget* createEntryPanel();
    void createMenus();
    void loadCaptions();
    // Accessible names, tooltips and the tab order of the window's widgets.
    void describeWidgets();
    void connectHandlers();
    void createKeyboardShortcuts();
    void showFunctionItems();
    void checkBoxClicked();
    void openSettings();
    void focusChanged(QWidget* now);
    void Text5_Validate();
    static bool labelIsValid(const QString& text);
    // "Save changes?" before the drawing is dropped; false when the user stays.
    bool askSaveChanges();
    // Reads the range rows into the view; a refusal is shown in the status bar and the
    // last good view stays. Returns whether the view changed (a change of the drawing).
    bool applyRangeRows();
    void loadRows(const model::RangePreset& x, const model::RangePreset& y);
    void set_triginputcontrols(bool fractions);
    void showStatus(const QString& text);
    std::array<QString, 4> rowTexts(const std::array<PiLineEdit*, 4>& row) const;
    void wheelZoom(double steps, QPointF at);
    // The shared colour dialog: opens on the colour chosen last, with the title it was
    // last given; a cancelled dialog still yields that colour.
    quint32 askColor(bool axisTitle);
    void recolorCurves();
    void openGuideLines(int mode);
    // The timer's one slot: the demonstration while it plays, otherwise the trace.
    void timerTick();
    void removeDemonstrationCurves();
    int demoEntry(qint32 tag) const;
    PlotLabel* placeLabel(std::vector<QPointer<PlotLabel>>& array, QPointF at);
    void placeLabels();
    void showFormulaObject();
    void symbolicCommand(bool derivative);
    void addTangentAt(QPointF at);
    void showTraceReadout();
    void traceTo(double x);
    plot::RedrawOptions redrawOptions() const;
    // The export's capture: the grip and font first, then the labels burnt into the
    // picture, and afterwards the font back, a black grip and a full redraw.
    void beginCapture();
    void burnLabels();
    void endCapture();
    // Shows a failed export's reason and tells whether it failed.
    bool failed(bool ok, const QString& reason);

    model::AppState m_state;
    model::Prompter& m_prompter;

    QLineEdit* Text5 = nullptr;
    QLineEdit* Text2 = nullptr;
    FunctionBox* imgcombfunc = nullptr;
    QPushButton* Command1 = nullptr;
    std::array<PiLineEdit*, 4> Text4{};
    std::array<PiLineEdit*, 4> Text6{};
    std::array<FractionInput*, 3> fracinput{};
    std::array<QToolButton*, 32> cmdtoken{};
    // The text widget that last had the focus; the keypad types into it.
    QWidget* m_activeTarget = nullptr;
    QString m_acceptedLabel = QStringLiteral("f(x)");
    QString m_colorTitle;
    quint32 m_dialogColor = 0;
    QPointF m_fillAnchor{0, 0};
    bool m_fillAnchorSet = false;
    int m_redraws = 0;
    std::array<QRadioButton*, 3> Option1{};
    QCheckBox* Check1 = nullptr;
    QCheckBox* Check2 = nullptr;
    QCheckBox* Check3 = nullptr;
    QCheckBox* Check4 = nullptr;
    std::array<QToolButton*, 11> Command5{};
    std::array<QLabel*, 5> statusPanels{};
    PlotWidget* Picture1 = nullptr;
    PlotFrame* m_plotFrame = nullptr;
    QLabel* lblGrip = nullptr;
    std::vector<QPointer<PlotLabel>> m_textLabels1;
    std::vector<QPointer<PlotLabel>> m_textLabels2;
    std::vector<QPointer<PlotLabel>> m_formulaObjects;
    // The formula object's source: the function of the box, typeset, to drag onto the plot.
    QLabel* OLE1 = nullptr;
    QString m_formulaObjectText;
    QPoint m_gripFrom;
    QFont m_labelFont;
    QFont m_plotFontDuringCapture;
    ZoomBoxWidget* piczoombox = nullptr;
    QPointer<frmsettings> m_settings;
    // The window's one timer: it plays the trace; the redraw stops it while it draws.
    QTimer* m_timer = nullptr;
    bool m_tracePlaying = false;
    QWidget* m_traceControls = nullptr;
    QPointer<frmtangent> m_tangent;
    // The demonstration buttons in the status bar: start, pause, step, stop.
    std::array<QToolButton*, 4> Command3{};
    QWidget* m_demoControls = nullptr;
    struct Demo {
        bool running = false;
        bool playing = false;
        std::vector<double> xs;
        std::size_t next = 0;
        bool fromList = false; // the listed x values, not a range
        bool hasLast = false;
        double lastX = 0;
    } m_demo;
    QAction* mnudemo = nullptr;
    QAction* mnupopdemo = nullptr;
    QAction* mnuremovetangents = nullptr;
    QMetaObject::Connection m_focusConnection;
    QMetaObject::Connection m_screenConnection;

    QMenu* mnufile = nullptr;
    QMenu* mnuedit = nullptr;
    QMenu* mnuzoom = nullptr;
    QMenu* mnutool = nullptr;
    QMenu* mnusettings = nullptr;
    QMenu* mnucolor = nullptr;
    QMenu* mnuhelp = nullptr;
    QMenu* mnuzoomout = nullptr;
    QMenu* mnupop2 = nullptr;
    QMenu* mnupop = nullptr;
    QAction* mnupopderiv = nullptr;
    QAction* mnupopprim = nullptr;
    QAction* mnupop21 = nullptr;
    QAction* mnupop22 = nullptr;
    QAction* mnunew = nullptr;
    QAction* mnusaveas = nullptr;
    QAction* mnuprint = nullptr;
    QAction* mnuexit = nullptr;
    QAction* mnucopy = nullptr;
    QAction* mnuzoomin = nullptr;
    QAction* mnuzoominc = nullptr;
    QAction* mnuzoombeg = nullptr;
    QAction* mnutangent = nullptr;
    QAction* mnutrace = nullptr;
    QAction* mnuderivative = nullptr;
    QAction* mnuprimitive = nullptr;
    QAction* mnudelete = nullptr;
    QAction* mnufill = nullptr;
    QAction* mnuvertical = nullptr;
    QAction* menuhoriz = nullptr;
    QAction* mnucolgrid = nullptr;
    QAction* mnucolaxis = nullptr;
    QAction* mnucolfunc = nullptr;
    QAction* mnucolwind = nullptr;
    QAction* mnucolfill = nullptr;
    QAction* mnufontsize = nullptr;
    QAction* mnucoord = nullptr;
    QAction* mnucont = nullptr;
    QAction* mnusearch = nullptr;
    QAction* mnuabout = nullptr;
};

} // namespace curvix::app
