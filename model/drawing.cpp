#include "model/drawing.h"

#include "model/graph_list.h"
#include "model/prompter.h"

#include <QCoreApplication>

#include <algorithm>

namespace curvix::model {

namespace {
// Messages a user reads; the command line shows them untranslated.
struct DrawingText {
    Q_DECLARE_TR_FUNCTIONS(DrawingText)
};
} // namespace

namespace {

// The saved links are set afterwards as they were; nothing is pending, so this is never asked.
class NoLinks final : public LinkCheck {
public:
    bool isDerivativeOf(const QString&, const QString&, const QString&) override { return false; }
    bool isPrimitiveOf(const QString&, const QString&, const QString&) override { return false; }
};

bool refuse(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

// Builds the graph list of the drawing in a scratch state; false with a message when a
// function cannot be added.
bool buildGraphs(AppState& scratch, const Drawing& drawing, QString* error)
{
    // The last message of addFunction, so that a refusal can say why.
    QString last;
    DialogFreePrompter prompter([&last](const QString& text) { last = text; });
    NoLinks links;
    for (std::size_t i = 0; i < drawing.functions.size(); ++i) {
        const DrawingFunction& f = drawing.functions[i];
        const QString label = QStringLiteral("f(%1)").arg(f.variable);
        last.clear();
        const QStringList undeclared =
            eval::undeclaredLetters(f.text, f.variable, scratch.parameters);
        if (!undeclared.isEmpty())
            return refuse(error, DrawingText::tr("function %1 '%2' uses %3, which the drawing "
                                                 "does not declare as parameters")
                                     .arg(i + 1)
                                     .arg(f.text, undeclared.join(QStringLiteral(", "))));
        const AddResult result = addFunction(scratch, prompter, links, f.text, label);
        if (result != AddResult::Added) {
            QString why = last.isEmpty() ? DrawingText::tr("it is empty") : last;
            if (result == AddResult::Duplicate)
                why = DrawingText::tr("it is listed twice");
            return refuse(error, DrawingText::tr("function %1 '%2' cannot be drawn: %3")
                                     .arg(i + 1)
                                     .arg(f.text, why));
        }
        GraphEntry& entry = scratch.graphs.back();
        entry.color = f.color;
        entry.derivativeIndex = f.derivativeIndex;
        entry.primitiveIndex = f.primitiveIndex;
        for (double x : f.tangentXs) {
            GraphMark mark;
            mark.text = scratch.listVariable;
            mark.x = x;
            entry.marks.push_back(std::move(mark));
        }
    }
    // A file that names no list variable takes the functions' own.
    if (!drawing.variable.isEmpty() && !drawing.functions.empty() &&
        scratch.listVariable != drawing.variable)
        return refuse(error, DrawingText::tr("the functions are not all in the variable '%1'")
                                 .arg(drawing.variable));
    return true;
}

} // namespace

Drawing drawingFromState(const AppState& state)
{
    Drawing d;
    d.variable = state.listVariable;
    for (const GraphEntry& entry : state.graphs) {
        DrawingFunction f;
        f.text = entry.text;
        f.variable = state.variable();
        f.color = entry.color;
        f.derivativeIndex = entry.derivativeIndex;
        f.primitiveIndex = entry.primitiveIndex;
        for (const GraphMark& mark : entry.marks)
            f.tangentXs.push_back(mark.x);
        d.functions.push_back(std::move(f));
    }
    d.items = state.functionItems;
    d.view = state.view;
    d.startView = state.startView;
    // Only the first zoomCount records can ever be stepped back to.
    const std::size_t steps =
        std::min(state.zoomHistory.size(), std::size_t(std::max<qint16>(state.zoomCount, 0)));
    d.zoomHistory.assign(state.zoomHistory.begin(), state.zoomHistory.begin() + qsizetype(steps));
    d.angleUnit = state.angleUnit;
    d.gridColor = state.gridColor;
    d.axisColor = state.axisColor;
    d.functionColor = state.functionColor;
    d.fillColor = state.fillColor;
    d.tangentColor = state.tangentColor;
    d.autoColors = state.autoColors;
    d.arrowEnds = state.arrows;
    d.coordinateSeparator = state.coordinateSeparator;
    d.verticalLines = state.verticalLines;
    d.horizontalLines = state.horizontalLines;
    d.fills = state.fills;
    d.parameters = state.parameters;
    d.areas = state.areas;
    return d;
}

bool applyDrawing(AppState& state, const Drawing& drawing, QString* error)
{
    AppState scratch;
    // The functions read the parameters as they are added again.
    scratch.parameters = drawing.parameters;
    if (!buildGraphs(scratch, drawing, error))
        return false;
    for (const AreaRegion& area : drawing.areas) {
        if (area.curve < 0 || area.curve >= scratch.graphCount)
            return refuse(error, DrawingText::tr("an area lies under curve %1, which is not "
                                                 "in the drawing")
                                     .arg(area.curve + 1));
    }

    state.graphs = std::move(scratch.graphs);
    state.graphCount = scratch.graphCount;
    state.functionItems = drawing.items;
    state.listVariable = drawing.functions.empty() ? drawing.variable : scratch.listVariable;
    state.newEntry = GraphEntry{};
    state.pendingDerivativeOf = -1;
    state.pendingPrimitiveOf = -1;

    state.view = drawing.view;
    state.startView = drawing.startView;
    state.zoomHistory = drawing.zoomHistory;
    state.zoomCount = qint16(drawing.zoomHistory.size());
    state.angleUnit = drawing.angleUnit;

    state.gridColor = drawing.gridColor;
    state.axisColor = drawing.axisColor;
    state.functionColor = drawing.functionColor;
    state.fillColor = drawing.fillColor;
    state.tangentColor = drawing.tangentColor;
    state.autoColors = drawing.autoColors;
    state.arrows = drawing.arrowEnds;
    state.coordinateSeparator = drawing.coordinateSeparator;

    state.verticalLines = drawing.verticalLines;
    state.horizontalLines = drawing.horizontalLines;
    state.fills = drawing.fills;
    state.parameters = drawing.parameters;
    state.areas = drawing.areas;

    state.demonstration = Demonstration{};
    state.trace = AppState::Trace{};
    state.documentChanged = false;
    return true;
}

} // namespace curvix::model
