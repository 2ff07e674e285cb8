#include "app/frmgraph.h"

#include "app/area_tools.h"
#include "app/color_actions.h"
#include "app/curve_tools.h"
#include "app/demonstration.h"
#include "app/document_actions.h"
#include "app/entry_panel.h"
#include "app/export_actions.h"
#include "app/form_names.h"
#include "app/frmabout1.h"
#include "app/frmsettings.h"
#include "app/frmtangent.h"
#include "app/help_window.h"
#include "app/plot_labels.h"
#include "app/parameter_actions.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/point_marks.h"
#include "app/range_panel.h"
#include "app/status_panels.h"
#include "app/symbolic_runner.h"
#include "app/tool_icons.h"
#include "app/value_table_dialog.h"
#include "app/window_actions.h"
#include "app/window_placement.h"
#include "eval/formula.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "output/settings_store.h"
#include "plot/colors.h"
#include "plot/picking.h"
#include "plot/trace.h"
#include "plot/zoom.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

namespace curvix::app {

using model::LoadResString;

frmgraph::frmgraph(model::Prompter& prompter, QWidget* parent)
    : QMainWindow(parent), m_prompter(prompter), m_actions(new WindowActions)
{
    setObjectName(QLatin1String(formName::mainWindow));
    setWindowTitle(LoadResString(1));
    setWindowIcon(curvixIcon());
    plot::InitPlotDefaults(m_state);

    *m_actions = createWindowActions(this, m_prompter);
    m_entry = new EntryPanel(this);
    m_ranges = new RangePanel(m_state, this);
    m_plotView = new PlotView(m_state, m_prompter, this);
    m_status = new StatusPanels(statusBar());
    m_curveTools = new CurveTools(m_state, *m_plotView, *m_status, statusBar());
    m_export = new ExportActions(m_state, m_prompter, *m_plotView, [this] { return redrawOptions(); }, this);
    m_colors = new ColorActions(m_state, m_prompter, *m_plotView, this);
    m_demonstration = new Demonstration(m_state, m_prompter, *m_status, statusBar());
    m_symbolic = new SymbolicRunner(m_prompter, this);
    m_curveTools->useSymbolic(m_symbolic);
    m_demonstration->useSymbolic(m_symbolic);
    m_entry->setPiTargets([this](const QWidget* w) { return m_ranges->takesPi(w); });
    m_plotView->labels().setFont(m_entry->labelFont());

    m_document = new DocumentActions(
        m_state, m_prompter, *m_export, this,
        {[this] { return captureDrawing(); },
         [this](const model::Drawing& drawing, QString* error) { return showDrawing(drawing, error); }});
    m_document->addToMenus(*m_actions);
    m_parameters = new ParameterActions(m_state, m_prompter, this);
    m_areas = new AreaTools(m_state, *m_status, this);
    connect(&m_plotView->labels(), &PlotLabels::changed, m_document, [this] { m_document->checkpoint(); });
    setAcceptDrops(true);

    createLayout();
    createToolBar();
    connectParts();
    connectCommands();
    connectParameters();
    createKeyboardShortcuts();
    m_state.startView = m_state.view;
    updateActions();
    restoreWindowPlacement(*this, QSize(1100, 720));
    m_entry->focusFunctionBox();
}

frmgraph::~frmgraph()
{
    // The application reports focus changes while this window is being taken apart.
    delete m_entry;
    delete m_actions;
}

PlotWidget* frmgraph::plotArea() const
{
    return m_plotView->plot();
}

void frmgraph::createLayout()
{
    auto* central = new QWidget(this);
    auto* outer = new QVBoxLayout(central);
    outer->addWidget(m_entry->entryRow());
    auto* body = new QHBoxLayout;
    body->addWidget(m_plotView->frame(), 1);
    // The side panel scrolls on a small screen rather than pushing the window off it.
    auto* sidePanel = new QWidget;
    auto* side = new QVBoxLayout(sidePanel);
    side->setContentsMargins(0, 0, 0, 0);
    side->addWidget(m_ranges);
    side->addWidget(m_entry->sidePanel(), 1);
    auto* sideScroll = new QScrollArea;
    sideScroll->setObjectName(QStringLiteral("sideScroll"));
    sideScroll->setWidget(sidePanel);
    sideScroll->setWidgetResizable(true);
    sideScroll->setFrameShape(QFrame::NoFrame);
    sideScroll->setFocusPolicy(Qt::NoFocus); // Tab goes to the boxes inside
    sideScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    sideScroll->setMinimumWidth(sidePanel->minimumSizeHint().width() +
                                sideScroll->verticalScrollBar()->sizeHint().width());
    body->addWidget(sideScroll);
    outer->addLayout(body, 1);
    setCentralWidget(central);

    // The tab order follows the layout: the entry row, the range panel, the label text and
    // the keypad.
    std::vector<QWidget*> chain = m_entry->entryTabOrder();
    chain.push_back(plotArea());
    for (const std::vector<QWidget*>& part : {m_ranges->tabOrder(), m_entry->sideTabOrder()})
        chain.insert(chain.end(), part.begin(), part.end());
    for (std::size_t i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

void frmgraph::createToolBar()
{
    auto* tools = new QToolBar(this);
    tools->setObjectName(QStringLiteral("toolbar"));
    tools->setMovable(false);
    tools->setIconSize(QSize(24, 24));
    const WindowActions& a = *m_actions;
    // Each tool button runs the menu command of the same name; zoom out opens its menu.
    const std::array<QAction*, 11> commands = {a.print,     a.zoomIn,    nullptr,         a.trace,
                                               a.tangentMode, a.derivative, a.primitive, a.deleteFunction,
                                               a.saveAs,    a.newDrawing, a.functionColor};
    const int tips[11] = {429, 491, 492, 484, 475, 486, 485, 469, 428, 426, 474};
    for (std::size_t i = 0; i < m_toolButtons.size(); ++i) {
        QToolButton* button = new QToolButton;
        m_toolButtons[i] = button;
        button->setObjectName(formNameAt(formName::toolButton, int(i)));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setToolTip(LoadResString(tips[i]).remove(QLatin1Char('&')));
        button->setAccessibleName(button->toolTip());
        setThemedIcon(button, [i](const QColor& ink) { return toolIcon(int(i), ink); });
        tools->addWidget(button);
        if (QAction* command = commands[i]) {
            button->setEnabled(command->isEnabled());
            connect(command, &QAction::changed, button,
                    [button, command] { button->setEnabled(command->isEnabled()); });
            // A mode's button shows whether the mode is on, whoever turned it on or off.
            button->setCheckable(command->isCheckable());
            connect(command, &QAction::toggled, button, &QToolButton::setChecked);
            connect(button, &QToolButton::clicked, command, [button, command] {
                command->trigger();
                button->setChecked(command->isChecked());
            });
        }
    }
    m_toolButtons[2]->setMenu(a.zoomOutMenu);
    m_toolButtons[2]->setPopupMode(QToolButton::InstantPopup);
    addToolBar(Qt::TopToolBarArea, tools);
}

void frmgraph::connectParts()
{
    connect(m_entry, &EntryPanel::drawRequested, this, &frmgraph::drawTypedFunction);
    connect(m_entry, &EntryPanel::statusMessage, m_status, &StatusPanels::showMessage);
    connect(m_ranges, &RangePanel::statusMessage, m_status, &StatusPanels::showMessage);
    connect(m_ranges, &RangePanel::redrawRequested, this, &frmgraph::redraw);
    connect(m_plotView, &PlotView::redrawNeeded, this, &frmgraph::redraw);
    connect(m_plotView, &PlotView::zoomBoxConfirmed, this, &frmgraph::zoomIntoBox);
    connect(m_plotView, &PlotView::wheelTurned, this, &frmgraph::zoomByWheel);
    connect(m_plotView, &PlotView::viewDragged, this, &frmgraph::dragView);
    connect(m_plotView, &PlotView::pointerText, m_status, &StatusPanels::showMessage);
    connect(m_plotView, &PlotView::leftPressed, this, &frmgraph::onPlotLeftPressed);
    connect(m_plotView, &PlotView::rightReleased, this, &frmgraph::onPlotRightReleased);
    connect(m_plotView, &PlotView::doubleClicked, this, &frmgraph::onPlotDoubleClicked);
    connect(plotArea(), &PlotWidget::keyActivated, this, &frmgraph::onPlotKeyActivated);
    // A dropped label shows π where its text has the character that stands for it.
    connect(plotArea(), &PlotWidget::textDropped, this, [this](const QString& text, QPointF at) {
        m_plotView->labels().addText(QString(text).replace(eval::kPiChar, QChar(0x03C0)), at);
    });
    connect(plotArea(), &PlotWidget::formulaDropped, this, [this](const QString& formula, QPointF at) {
        m_plotView->labels().addFormula(formula, m_entry->labelText(), at);
    });
    connect(m_curveTools, &CurveTools::redrawNeeded, this, &frmgraph::redraw);
    connect(m_curveTools, &CurveTools::tangentDragged, this, [this](bool first) {
        m_dragContinues = !first;
        redraw();
        m_dragContinues = false;
    });
    connect(m_colors, &ColorActions::redrawNeeded, this, &frmgraph::redraw);
    connect(m_colors, &ColorActions::curveColorsChanged, this, &frmgraph::showFunctionItems);
    connect(m_demonstration, &Demonstration::redrawNeeded, this, &frmgraph::redraw);
    connect(m_demonstration, &Demonstration::functionsChanged, this, &frmgraph::showFunctionItems);
    connect(m_demonstration, &Demonstration::started, this, [this] { m_actions->trace->setChecked(false); });
    connect(m_symbolic, &SymbolicRunner::answered, this, &frmgraph::onSymbolicAnswer);
    connect(m_symbolic, &SymbolicRunner::busyChanged, this, [this](bool busy) {
        m_entry->setBusy(busy);
        m_status->showMessage(busy ? LoadResString(5078) : QString());
        updateActions();
    });
}

void frmgraph::connectCommands()
{
    const WindowActions& a = *m_actions;
    connect(a.newDrawing, &QAction::triggered, this, &frmgraph::newDrawing);
    connect(a.saveAs, &QAction::triggered, m_document, [this] { m_document->saveAs(); });
    connect(a.print, &QAction::triggered, m_export, &ExportActions::print);
    connect(a.printPreview, &QAction::triggered, m_export, &ExportActions::printPreview);
    m_export->addToMenu(a.fileMenu, a.print);
    connect(a.exit, &QAction::triggered, this, &QWidget::close);
    connect(a.copy, &QAction::triggered, m_export, &ExportActions::copy);
    connect(a.zoomIn, &QAction::triggered, this, [this] {
        m_plotView->showZoomBox();
        redraw();
    });
    connect(a.zoomOutStep, &QAction::triggered, this, [this] { zoomOut(false); });
    connect(a.zoomToStart, &QAction::triggered, this, [this] { zoomOut(true); });
    connect(a.equalScale, &QAction::toggled, m_plotView, &PlotView::setEqualScale);
    connect(a.tangentMode, &QAction::toggled, m_curveTools, &CurveTools::setTangentMode);
    connect(a.removeTangents, &QAction::triggered, this,
            [this] { m_curveTools->removeTangents(selectedEntry()); });
    connect(a.trace, &QAction::toggled, this, &frmgraph::setTrace);
    for (QAction* derivative : {a.derivative, a.popupDerivative})
        connect(derivative, &QAction::triggered, this, [this] { requestSymbolic(true); });
    for (QAction* primitive : {a.primitive, a.popupPrimitive})
        connect(primitive, &QAction::triggered, this, [this] { requestSymbolic(false); });
    connect(a.deleteFunction, &QAction::triggered, this, &frmgraph::deleteSelectedFunction);
    connect(a.fill, &QAction::triggered, m_colors, &ColorActions::fill);
    connect(a.verticalLines, &QAction::triggered, this, [this] { openGuideLines(frmtangent::Usage::VerticalLines); });
    connect(a.horizontalLines, &QAction::triggered, this, [this] { openGuideLines(frmtangent::Usage::HorizontalLines); });
    for (QAction* demo : {a.demonstration, a.popupDemonstration})
        connect(demo, &QAction::triggered, this, &frmgraph::openDemonstration);
    connect(a.pointsOfInterest, &QAction::triggered, this, [this] {
        markPointsOfInterest(m_state, selectedEntry(), m_plotView->labels(),
                             QSizeF(plotArea()->size()), m_entry->labelFont());
    });
    connect(a.valueTable, &QAction::triggered, this, [this] {
        auto* dialog = new ValueTableDialog(m_state, m_prompter, this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        // An open table follows the sliders.
        connect(m_parameters, &ParameterActions::valueMoved, dialog, &ValueTableDialog::fill);
        connect(m_parameters, &ParameterActions::changed, dialog, &ValueTableDialog::fill);
        dialog->show();
    });
    connect(a.gridColor, &QAction::triggered, m_colors, &ColorActions::chooseGridColor);
    connect(a.axisColor, &QAction::triggered, m_colors, &ColorActions::chooseAxisColor);
    connect(a.functionColor, &QAction::triggered, m_colors, &ColorActions::chooseFunctionColor);
    connect(a.popupColor, &QAction::triggered, this, [this] { m_colors->changeCurveColor(selectedEntry()); });
    connect(a.popupEdit, &QAction::triggered, this, [this] {
        if (const int k = selectedEntry(); k >= 0)
            m_entry->beginEditing(m_state.graphs[std::size_t(k)].text);
    });
    a.autoColors->setChecked(m_state.autoColors);
    connect(a.autoColors, &QAction::toggled, m_colors, &ColorActions::setAutoColors);
    a.smoothCurves->setChecked(m_state.smoothCurves);
    connect(a.smoothCurves, &QAction::toggled, m_colors, &ColorActions::setSmoothCurves);
    connect(a.windowColor, &QAction::triggered, m_colors, &ColorActions::chooseWindowColor);
    connect(a.fillColor, &QAction::triggered, m_colors, &ColorActions::chooseFillColor);
    connect(a.fontSize, &QAction::triggered, m_colors, &ColorActions::chooseFontSize);
    connect(a.settings, &QAction::triggered, this, &frmgraph::openSettings);
    connect(a.helpContents, &QAction::triggered, this, [this] { showHelp(this, HelpTab::Contents); });
    connect(a.helpSearch, &QAction::triggered, this, [this] { showHelp(this, HelpTab::Search); });
    connect(a.about, &QAction::triggered, this, [this] {
        frmAbout1 about(m_prompter, this);
        about.exec();
    });
}

void frmgraph::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // A screen of another pixel density needs the picture drawn again at its density.
    if (windowHandle() && !m_screenConnection)
        m_screenConnection = connect(windowHandle(), &QWindow::screenChanged, this, &frmgraph::redraw);
}

void frmgraph::updateActions()
{
    const bool any = !m_state.graphs.empty();
    const bool idle = !m_symbolic->busy();
    const WindowActions& a = *m_actions;
    for (QAction* action : {a.deleteFunction, a.trace})
        action->setEnabled(any);
    for (QAction* action : {a.derivative, a.primitive, a.popupDerivative, a.popupPrimitive})
        action->setEnabled(idle && any);
}

plot::RedrawOptions frmgraph::redrawOptions() const
{
    plot::RedrawOptions options;
    m_ranges->fillRedrawOptions(options);
    options.font = plotArea()->font();
    return options;
}

void frmgraph::redraw()
{
    forgetPendingRedraw(); // this redraw draws it too
    if (const std::optional<model::ViewWindow> equal = m_plotView->equalScaleView()) {
        if (*equal != m_state.view)
            applyView(*equal);
        m_plotView->equalScaleShown();
    }
    m_curveTools->pauseForRedraw();
    m_symbolic->setParameterNames(eval::parameterNames(m_state.parameters));
    m_areas->preparePrimitives();
    m_plotView->redraw(redrawOptions());
    m_parameters->refresh();
    m_entry->setParameters(m_state.parameters);
    m_ranges->setSettingUp(false);
    ++m_redraws;
    m_curveTools->afterRedraw();
    const model::AppState::Trace& trace = m_state.trace;
    plotArea()->setKeyboardPoint(trace.on && trace.found
                                     ? std::optional(m_plotView->scale().toPixel(trace.x, trace.y))
                                     : std::nullopt);
    m_document->checkpoint(m_dragContinues);
}

void frmgraph::showFunctionItems()
{
    std::vector<QColor> colors;
    for (const model::FunctionItem& item : m_state.functionItems) {
        const int k = model::findGraphByText(m_state, item.text);
        colors.push_back(plot::colorFromValue(k >= 0 ? m_state.graphs[std::size_t(k)].color
                                                     : m_state.functionColor));
    }
    m_entry->showItems(m_state.functionItems, colors);
    updateActions();
}

int frmgraph::selectedEntry() const
{
    return model::findGraphByText(m_state, m_entry->functionText());
}

void frmgraph::drawTypedFunction()
{
    // A label the box refused names no variable: nothing is drawn until it is mended.
    if (!m_entry->labelIsValid()) {
        m_entry->validateLabel();
        return;
    }
    const bool viewChanged = m_ranges->applyToView();
    const QString edited = m_entry->editedText();
    const model::AddResult result =
        edited.isEmpty()
            ? model::addFunction(m_state, m_prompter, m_symbolic->linkCheck(), m_entry->functionText(),
                                 m_entry->labelText())
            : model::replaceFunction(m_state, m_prompter, m_symbolic->linkCheck(),
                                     model::findGraphByText(m_state, edited), m_entry->functionText(),
                                     m_entry->labelText());
    if (!edited.isEmpty() && result != model::AddResult::Rejected)
        m_entry->endEditing();
    if (result == model::AddResult::Added)
        showFunctionItems();
    const bool drawn = result == model::AddResult::Added || result == model::AddResult::Duplicate;
    if (drawn)
        m_entry->selectFunctionText();
    if (drawn || viewChanged)
        redraw();
}

void frmgraph::stopTools()
{
    {
        // Each of these steps would draw on its own; the one redraw at the end does for all.
        const QSignalBlocker tools(m_curveTools);
        const QSignalBlocker view(m_plotView);
        const QSignalBlocker demonstration(m_demonstration);
        m_actions->trace->setChecked(false);
        m_actions->tangentMode->setChecked(false);
        m_demonstration->stop();
        m_plotView->fillFrame();
    }
    m_symbolic->cancel();
}

void frmgraph::newDrawing()
{
    if (!m_document->askSaveChanges())
        return;
    stopTools();
    m_plotView->labels().clear();
    model::clearDrawing(m_state);
    m_ranges->setSettingUp(true);
    showFunctionItems();
    m_entry->setFunctionText(QString());
    m_ranges->reset();
    stepBackInHistory(true);
    m_state.documentChanged = false;
    redraw();
    m_document->drawingCleared();
}

void frmgraph::deleteSelectedFunction()
{
    const QString traced = m_state.trace.on ? m_state.graphs[std::size_t(m_state.trace.entry)].text
                                            : QString();
    if (m_state.trace.on && traced == m_entry->functionText())
        m_actions->trace->setChecked(false);
    // The traced curve keeps the trace when an entry before it goes and its index moves.
    if (!model::deleteFunctionItem(m_state, m_entry->itemPosition(m_state.functionItems)))
        return;
    m_demonstration->functionDeleted();
    if (m_state.trace.on)
        m_state.trace.entry = model::findGraphByText(m_state, traced);
    if (m_state.trace.on && m_state.trace.entry < 0) // it went with its source
        m_actions->trace->setChecked(false);
    showFunctionItems();
    m_entry->setFunctionText(QString());
    redraw();
    m_entry->clearFunctionText();
}

void frmgraph::requestSymbolic(bool derivative)
{
    const QString text = m_entry->functionText();
    if (text.isEmpty())
        return;
    m_symbolic->request(derivative, text, model::labelVariable(m_entry->labelText()), selectedEntry(),
                        m_state.angleUnit);
}

void frmgraph::onSymbolicAnswer(bool derivative, int source, const QString& answer)
{
    m_entry->setFunctionText(answer);
    (derivative ? m_state.pendingDerivativeOf : m_state.pendingPrimitiveOf) = std::max(source, -1);
    redraw();
}

void frmgraph::setTrace(bool on)
{
    if (!on) {
        m_curveTools->stopTrace();
        return;
    }
    m_demonstration->pause();
    if (!m_curveTools->startTrace(plot::traceEntryFor(m_state, m_entry->functionText()))) {
        const QSignalBlocker blocker(m_actions->trace);
        m_actions->trace->setChecked(false);
    }
}

void frmgraph::closeEvent(QCloseEvent* event)
{
    if (!m_document->askSaveChanges()) {
        event->ignore();
        return;
    }
    m_symbolic->cancel();
    if (m_settings)
        m_settings->close();
    // A store that cannot be written is reported; the program closes all the same.
    QString error;
    if (!output::writeColorSettings(m_state, &error))
        m_prompter.message(error);
    rememberWindowPlacement(*this);
    m_document->closeCleanly();
    event->accept();
}

} // namespace curvix::app
