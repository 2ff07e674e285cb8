#pragma once

#include "app/frmtangent.h"
#include "model/app_state.h"
#include "model/prompter.h"
#include "plot/render.h"
#include "plot/zoom.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <array>

class QToolButton;

namespace curvix::app {

class AreaTools;
class ColorActions;
class CurveTools;
class Demonstration;
class DocumentActions;
class EntryPanel;
class ExportActions;
class ParameterActions;
class PlotView;
class PlotWidget;
class RangePanel;
class StatusPanels;
class SymbolicRunner;
class frmsettings;
struct WindowActions;

// The main window: wiring over its parts (the entry panel, the range panel, the plot view
// with its tools, the demonstration, the export and the colour commands). Its handlers are
// short; the work is done by the parts and the procedures of the core.
class frmgraph : public QMainWindow {
    Q_OBJECT
public:
    explicit frmgraph(model::Prompter& prompter, QWidget* parent = nullptr);
    ~frmgraph() override;

    model::AppState& state() { return m_state; }
    const model::AppState& state() const { return m_state; }
    PlotWidget* plotArea() const;
    PlotView& plotView() const { return *m_plotView; }
    ExportActions& exportActions() const { return *m_export; }
    CurveTools& curveTools() const { return *m_curveTools; }
    ColorActions& colorActions() const { return *m_colors; }
    Demonstration& demonstration() const { return *m_demonstration; }
    SymbolicRunner& symbolicRunner() const { return *m_symbolic; }
    DocumentActions& document() const { return *m_document; }
    ParameterActions& parameters() const { return *m_parameters; }

    // The full redraw of the plot; every change of the drawing ends in one call of it.
    void redraw();
    // How many full redraws have run: lets tests see that a click redrew nothing.
    int redrawCount() const { return m_redraws; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    // A drawing file dropped on the window is opened.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    // While a redraw waits, a click or a key first draws it: they act on the picture shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createLayout();
    void createToolBar();
    void connectParts();
    void connectCommands();
    // The parameters' dock and the area commands.
    void connectParameters();
    void createKeyboardShortcuts();
    // Enables the commands that need a function: Delete, Derivative, Primitive, Trace.
    void updateActions();
    plot::RedrawOptions redrawOptions() const;
    void showFunctionItems();
    int selectedEntry() const;

    void drawTypedFunction();
    void newDrawing();
    void deleteSelectedFunction();
    // The drawing on screen as a file keeps it, and a saved one put in its place (false,
    // with the reason, when it cannot be shown; nothing changes then).
    model::Drawing captureDrawing() const;
    bool showDrawing(const model::Drawing& drawing, QString* error);
    // Ends the trace, tangent mode, the demonstration and a symbolic calculation.
    void stopTools();
    void requestSymbolic(bool derivative);
    void onSymbolicAnswer(bool derivative, int source, const QString& answer);
    void setTrace(bool on);
    void zoomIntoBox(const plot::ZoomBox& box);
    // Back one step of the zoom history, or to its beginning; false when it is empty.
    bool stepBackInHistory(bool toBeginning);
    void zoomOut(bool toBeginning);
    void zoomByWheel(double steps, QPointF world);
    // Writes a view computed by a zoom or a drag into the range rows and reads it back.
    void applyView(const model::ViewWindow& view);
    // The first move of each drag is one step of the zoom history.
    void dragView(const model::ViewWindow& view, bool first);
    // The redraw of a wheel turn or a drag of the view, whose view is already set: it runs
    // once the events already waiting are read, so that turns and moves faster than the
    // frames give one redraw. continuing: a drag's move after its first.
    void redrawSoon(bool continuing);
    void drawPendingRedraw();
    void forgetPendingRedraw();
    void onPlotLeftPressed(QPointF at);
    void onPlotRightReleased(QPointF at);
    void onPlotDoubleClicked(QPointF at);
    // Enter on the plot: a tangent in tangent mode, else a point label, where the trace is.
    void onPlotKeyActivated(QPointF at);
    void editFormulaPicture();
    frmtangent* tangentWindow();
    void openGuideLines(frmtangent::Usage usage);
    void openDemonstration();
    void openSettings();

    model::AppState m_state;
    model::Prompter& m_prompter;
    int m_redraws = 0;

    WindowActions* m_actions = nullptr;
    EntryPanel* m_entry = nullptr;
    RangePanel* m_ranges = nullptr;
    PlotView* m_plotView = nullptr;
    StatusPanels* m_status = nullptr;
    CurveTools* m_curveTools = nullptr;
    ExportActions* m_export = nullptr;
    ColorActions* m_colors = nullptr;
    Demonstration* m_demonstration = nullptr;
    SymbolicRunner* m_symbolic = nullptr;
    DocumentActions* m_document = nullptr;
    ParameterActions* m_parameters = nullptr;
    AreaTools* m_areas = nullptr;
    bool m_dragContinues = false; // the redraw of a drag after its first step
    QTimer* m_redrawTimer = nullptr; // runs the redraw that waits, made on first use
    bool m_pendingContinues = false; // the waiting redraw only continues a drag
    std::array<QToolButton*, 11> m_toolButtons{};
    QPointer<frmsettings> m_settings;
    QPointer<frmtangent> m_tangent;
    QMetaObject::Connection m_screenConnection;
};

} // namespace curvix::app
