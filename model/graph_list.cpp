#include "model/graph_list.h"

#include "eval/formula.h"
#include "model/parameter_list.h"
#include "model/strings.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace curvix::model {

namespace {

constexpr int kOverflowText = 2016;
constexpr int kDrawnAlreadyText = 5143;

// Eight colours that stay apart in greyscale print; their grey levels (0.299 R + 0.587 G +
// 0.114 B, of 255) step by about 28: black 0, blue 28, dark red 56, green 84, purple 112,
// orange 139, pink 170, gold 195. Values are 0x00BBGGRR.
constexpr std::array<quint32, 8> kAutoPalette{0x000000, 0xF50000, 0x0000BB, 0x008F00,
                                              0xFA28C8, 0x0073F0, 0xFF6EFF, 0x00D2F0};

// Steps from entry `from` along one kind of link until it ends. Stale links may form a
// cycle after deletions, so the walk never takes more steps than there are entries.
int chainLength(const AppState& state, int from, qint32 GraphEntry::*link)
{
    const int count = static_cast<int>(state.graphs.size());
    int steps = 0;
    int k = from;
    while (k >= 0 && k < count && steps <= count) {
        k = state.graphs[k].*link;
        if (k == -1)
            break;
        ++steps;
    }
    return steps;
}

void insertItem(AppState& state, int index, FunctionItem item)
{
    const auto size = static_cast<int>(state.functionItems.size());
    index = std::clamp(index, 0, size);
    state.functionItems.insert(state.functionItems.begin() + index, std::move(item));
}

// The drop-down item of a new entry: below its source when it is a derivative, above it
// (pushing the source's chain one level deeper) when it is a primitive.
void placeItem(AppState& state, const QString& text, int derivativeSource, int primitiveSource)
{
    if (derivativeSource >= 0) {
        const int depth = 1 + chainLength(state, derivativeSource, &GraphEntry::primitiveIndex);
        const int pos = findItemByText(state, state.graphs[derivativeSource].text);
        if (pos > 0) {
            insertItem(state, pos, {text, depth});
            return;
        }
    } else if (primitiveSource >= 0) {
        const int depth = 1 + chainLength(state, primitiveSource, &GraphEntry::derivativeIndex);
        const int pos = findItemByText(state, state.graphs[primitiveSource].text);
        if (pos > 0) {
            const int at = pos - 1;
            const int ownIndent = state.functionItems[at].indent;
            insertItem(state, at, {text, ownIndent});
            const int last = std::min<int>(at + depth, int(state.functionItems.size()) - 1);
            for (int i = at + 1; i <= last; ++i)
                ++state.functionItems[i].indent;
            return;
        }
    }
    state.functionItems.push_back({text, 0});
}

// The link question for a pending source, none when that is no entry.
std::optional<LinkQuestion> pendingQuestion(const AppState& state, LinkKind kind,
                                            const QString& text, const QString& letter)
{
    const int k = kind == LinkKind::Derivative ? state.pendingDerivativeOf : state.pendingPrimitiveOf;
    if (k < 0 || k >= static_cast<int>(state.graphs.size()))
        return std::nullopt;
    return LinkQuestion{kind, state.graphs[std::size_t(k)].text, text, letter};
}

QString oneVariableText()
{
    return LoadResString(2091);
}

// A label's letter that names a parameter cannot be the variable too: said, and true.
bool variableIsParameter(const AppState& state, Prompter& prompter, const QString& letter)
{
    if (eval::parameterIndex(state.parameters, letter) < 0)
        return false;
    prompter.message(QCoreApplication::translate(
        "ParameterText", "%1 is a parameter of the drawing; it cannot be the variable too.")
                         .arg(letter));
    return true;
}

// The typed text prepared for the evaluator, "" when it is refused (the evaluator says why).
// Letters not declared are first offered as parameters; declined, the text is refused
// without a second message.
QString preparedText(AppState& state, Prompter& prompter, const QString& text, const QString& label)
{
    const QString letter = labelVariable(label);
    if (!offerParameters(state, prompter, text, letter))
        return {};
    return eval::PrepareExpressionText(state.evaluator, text, label,
                                       [&](const QString& m) { prompter.message(m); }, QLocale(),
                                       state.parameters);
}

AddResult addFunctionSteps(AppState& state, Prompter& prompter, LinkCheck& links,
                           const QString& text, const QString& label, int keyCode)
{
    if (keyCode != kEnterKey || text.isEmpty())
        return AddResult::Ignored;

    const QString letter = labelVariable(label);
    if (variableIsParameter(state, prompter, letter))
        return AddResult::Rejected;
    if (state.listVariable.isEmpty()) {
        state.listVariable = letter;
    } else if (state.listVariable != letter) {
        prompter.message(oneVariableText());
        return AddResult::Rejected;
    }

    const QString expression = preparedText(state, prompter, text, label);
    if (expression.isEmpty())
        return AddResult::Rejected;

    if (graphExists(state, text))
        return AddResult::Duplicate;

    // The count is 16 bits wide: a full list refuses the entry before anything changes.
    if (state.graphCount == std::numeric_limits<qint16>::max()) {
        prompter.message(LoadResString(kOverflowText));
        return AddResult::Rejected;
    }

    GraphEntry& entry = state.newEntry;
    entry = GraphEntry{};
    entry.expression = expression;
    entry.text = text;
    entry.parameters = eval::parametersUsedBy(text, letter, state.parameters);
    compileEntry(state, entry);
    entry.color = colorForNewFunction(state);

    const int newIndex = state.graphCount;
    if (const auto q = pendingQuestion(state, LinkKind::Derivative, text, letter);
        q && askLink(links, *q)) {
        entry.primitiveIndex = state.pendingDerivativeOf;
        state.graphs[state.pendingDerivativeOf].derivativeIndex = newIndex;
    } else {
        state.pendingDerivativeOf = -1;
    }
    if (const auto q = pendingQuestion(state, LinkKind::Primitive, text, letter);
        q && askLink(links, *q)) {
        entry.derivativeIndex = state.pendingPrimitiveOf;
        state.graphs[state.pendingPrimitiveOf].primitiveIndex = newIndex;
    } else {
        state.pendingPrimitiveOf = -1;
    }

    state.graphs.push_back(entry);
    placeItem(state, text, state.pendingDerivativeOf, state.pendingPrimitiveOf);
    ++state.graphCount;
    state.documentChanged = true;
    return AddResult::Added;
}

} // namespace

AddResult addFunction(AppState& state, Prompter& prompter, LinkCheck& links, const QString& text,
                      const QString& label, int keyCode)
{
    // Letters declared on the way stay only with the function that needed them.
    const std::size_t declared = state.parameters.size();
    const AddResult result = addFunctionSteps(state, prompter, links, text, label, keyCode);
    if (result == AddResult::Rejected)
        state.parameters.resize(declared);
    state.pendingDerivativeOf = -1;
    state.pendingPrimitiveOf = -1;
    return result;
}

namespace {

// Keeps the link from entry k to its derivative or primitive only when the check confirms
// it for k's new text; a link that no longer holds is cut at both ends.
void recheckLink(AppState& state, LinkCheck& links, int k, LinkKind kind)
{
    const auto count = static_cast<int>(state.graphs.size());
    GraphEntry& entry = state.graphs[std::size_t(k)];
    // derivativeIndex names the entry's derivative, primitiveIndex the one it derives from.
    qint32& link = kind == LinkKind::Derivative ? entry.derivativeIndex : entry.primitiveIndex;
    if (link < 0 || link >= count)
        return;
    GraphEntry& other = state.graphs[std::size_t(link)];
    const bool holds = kind == LinkKind::Derivative
                           ? links.isDerivativeOf(entry.text, other.text, state.listVariable)
                           : links.isDerivativeOf(other.text, entry.text, state.listVariable);
    if (holds)
        return;
    qint32& back = kind == LinkKind::Derivative ? other.primitiveIndex : other.derivativeIndex;
    if (back == k)
        back = -1;
    link = -1;
}

} // namespace

AddResult replaceFunction(AppState& state, Prompter& prompter, LinkCheck& links, int k,
                          const QString& text, const QString& label)
{
    if (k < 0 || k >= static_cast<int>(state.graphs.size()) || text.isEmpty())
        return AddResult::Ignored;
    GraphEntry& entry = state.graphs[std::size_t(k)];
    if (entry.text == text)
        return AddResult::Duplicate;
    // The variable may change only with the one function that uses it.
    const QString letter = labelVariable(label);
    if (variableIsParameter(state, prompter, letter))
        return AddResult::Rejected;
    if (letter != state.listVariable && state.graphs.size() > 1) {
        prompter.message(oneVariableText());
        return AddResult::Rejected;
    }
    const std::size_t declared = state.parameters.size();
    const QString expression = preparedText(state, prompter, text, label);
    if (expression.isEmpty())
        return AddResult::Rejected;
    if (graphExists(state, text)) {
        state.parameters.resize(declared); // letters declared for it go with it
        prompter.message(LoadResString(kDrawnAlreadyText).arg(text));
        return AddResult::Rejected;
    }

    if (const int item = findItemByText(state, entry.text); item > 0)
        state.functionItems[std::size_t(item - 1)].text = text;
    state.listVariable = letter;
    entry.text = text;
    entry.expression = expression;
    entry.parameters = eval::parametersUsedBy(text, letter, state.parameters);
    // The old function's derivative does not hold for the new one.
    entry.slopeText.clear();
    entry.slopeFormula.reset();
    compileEntry(state, entry);
    for (GraphMark& mark : entry.marks)
        mark.text = letter;
    recheckLink(state, links, k, LinkKind::Derivative);
    recheckLink(state, links, k, LinkKind::Primitive);
    state.documentChanged = true;
    return AddResult::Added;
}

void removeAreasOf(AppState& state, int k)
{
    // The read-outs stand beside their areas: they go together.
    state.areaReadouts.resize(state.areas.size());
    for (std::size_t i = state.areas.size(); i-- > 0;) {
        if (state.areas[i].curve == k) {
            state.areas.erase(state.areas.begin() + std::ptrdiff_t(i));
            state.areaReadouts.erase(state.areaReadouts.begin() + std::ptrdiff_t(i));
        }
    }
}

void removeGraphAt(AppState& state, int k)
{
    if (k < 0 || k >= static_cast<int>(state.graphs.size()))
        return;
    for (GraphEntry& e : state.graphs) {
        if (e.derivativeIndex == k) {
            e.derivativeIndex = -1;
            break;
        }
    }
    for (GraphEntry& e : state.graphs) {
        if (e.primitiveIndex == k) {
            e.primitiveIndex = -1;
            break;
        }
    }
    // The areas under the removed curve go with it; those of later curves follow their index.
    removeAreasOf(state, k);
    for (AreaRegion& area : state.areas) {
        if (area.curve > k)
            --area.curve;
    }
    if (state.graphs.size() > 1) {
        state.graphs.erase(state.graphs.begin() + k);
        --state.graphCount;
    } else {
        std::vector<GraphEntry>().swap(state.graphs);
        state.graphCount = 0;
    }
    state.documentChanged = true;
}

bool deleteFunctionItem(AppState& state, int position)
{
    auto& items = state.functionItems;
    if (position < 1 || position > static_cast<int>(items.size()))
        return false;
    const std::size_t at = static_cast<std::size_t>(position - 1);
    const FunctionItem item = items[at];
    for (std::size_t i = at + 1; i < items.size() && items[i].indent > item.indent; ++i)
        --items[i].indent;
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
    removeGraphAt(state, findGraphByText(state, item.text));
    if (items.empty())
        state.listVariable.clear();
    return true;
}

void clearDrawing(AppState& state)
{
    std::vector<GraphEntry>().swap(state.graphs);
    state.graphCount = 0;
    state.functionItems.clear();
    state.listVariable.clear();
    state.verticalLines.clear();
    state.horizontalLines.clear();
    state.fills.clear();
    state.parameters.clear();
    state.areas.clear();
    state.demonstration = Demonstration{};
    state.pendingDerivativeOf = -1;
    state.pendingPrimitiveOf = -1;
    state.angleUnit = AngleUnit::Radians;
    state.documentChanged = false;
}

quint32 colorForNewFunction(const AppState& state)
{
    if (!state.autoColors)
        return state.functionColor;
    std::array<std::size_t, kAutoPalette.size()> uses{};
    for (const GraphEntry& entry : state.graphs) {
        const auto* it = std::find(kAutoPalette.begin(), kAutoPalette.end(), entry.color);
        if (it != kAutoPalette.end())
            ++uses[std::size_t(it - kAutoPalette.begin())];
    }
    return kAutoPalette[std::size_t(std::min_element(uses.begin(), uses.end()) - uses.begin())];
}

int findGraphByText(const AppState& state, const QString& text)
{
    for (std::size_t k = 0; k < state.graphs.size(); ++k) {
        if (state.graphs[k].text == text)
            return static_cast<int>(k);
    }
    return -1;
}

bool graphExists(const AppState& state, const QString& text)
{
    return state.graphCount != 0 && findGraphByText(state, text) >= 0;
}

int findItemByText(const AppState& state, const QString& text)
{
    for (std::size_t i = 0; i < state.functionItems.size(); ++i) {
        if (state.functionItems[i].text == text)
            return static_cast<int>(i) + 1;
    }
    return -1;
}

// Links may point past the end after deletions; following one finds nothing there.
int derivativeOf(const AppState& state, int k)
{
    return k >= 0 && k < int(state.graphs.size()) ? state.graphs[std::size_t(k)].derivativeIndex : -1;
}

int primitiveOf(const AppState& state, int k)
{
    return k >= 0 && k < int(state.graphs.size()) ? state.graphs[std::size_t(k)].primitiveIndex : -1;
}

QString labelVariable(const QString& label)
{
    const QString letter = eval::VariableNameFromLabel(label);
    return letter.isEmpty() ? QStringLiteral("x") : letter;
}

} // namespace curvix::model
