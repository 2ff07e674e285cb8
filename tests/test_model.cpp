#include "model/graph_list.h"
#include "model/parameter_list.h"
#include "scripted_prompter.h"

#include <QTest>

#include <algorithm>

using namespace curvix::model;
namespace eval = curvix::eval;
Q_DECLARE_METATYPE(curvix::eval::Parameter)

namespace {

// Answers every link question alike and records each as "d|p source candidate variable".
struct FakeLinks : LinkCheck {
    bool answer = true;
    QStringList asked;

    bool isDerivativeOf(const QString& source, const QString& candidate, const QString& variable) override
    {
        asked << QStringList{"d", source, candidate, variable}.join(QLatin1Char(' '));
        return answer;
    }
    bool isPrimitiveOf(const QString& source, const QString& candidate, const QString& variable) override
    {
        asked << QStringList{"p", source, candidate, variable}.join(QLatin1Char(' '));
        return answer;
    }
};

QStringList entryTexts(const AppState& state)
{
    QStringList texts;
    for (const GraphEntry& e : state.graphs)
        texts << e.text;
    return texts;
}

QString itemTree(const AppState& state)
{
    QStringList rows;
    for (const FunctionItem& item : state.functionItems)
        rows << QString::number(item.indent) + QLatin1Char(':') + item.text;
    return rows.join(QLatin1Char(' '));
}

// Each step: "d:K:text" adds text as the derivative of entry K, "p:K:text" as a primitive
// of entry K, plain text as an ordinary function of x.
void addSteps(AppState& state, ScriptedPrompter& prompter, const QStringList& steps)
{
    for (const QString& step : steps) {
        const QStringList parts = step.split(QLatin1Char(':'));
        if (parts.size() == 3)
            (parts[0] == QLatin1String("d") ? state.pendingDerivativeOf
                                            : state.pendingPrimitiveOf) = parts[1].toInt();
        FakeLinks links;
        QCOMPARE(addFunction(state, prompter, links, parts.last(), QStringLiteral("f(x)")),
                 AddResult::Added);
    }
}

} // namespace

class TestModel : public QObject {
    Q_OBJECT

private slots:
    void addingFollowsTheListRules_data();
    void addingFollowsTheListRules();
    void pendingIndexesLastOneCall_data();
    void pendingIndexesLastOneCall();
    void linkedEntriesFormATree_data();
    void linkedEntriesFormATree();
    void removingKeepsStaleLinks_data();
    void removingKeepsStaleLinks();
    void deletingAnItemLiftsItsChildren_data();
    void deletingAnItemLiftsItsChildren();
    void editingReplacesInPlace_data();
    void editingReplacesInPlace();
    void newFunctionsTakeTheirColour_data();
    void newFunctionsTakeTheirColour();
    void undeclaredLettersAreOffered_data();
    void undeclaredLettersAreOffered();
    void parameterEdits_data();
    void parameterEdits();
};

void TestModel::addingFollowsTheListRules_data()
{
    QTest::addColumn<QStringList>("typed"); // each text with its label after "@", or f(x)
    QTest::addColumn<QStringList>("expectedEntries");
    QTest::addColumn<QString>("expectedVariable");
    QTest::addColumn<int>("expectedMessages");

    QTest::newRow("empty text adds nothing") << QStringList{""} << QStringList{} << "" << 0;
    QTest::newRow("same text twice is one entry")
        << QStringList{"x^2", "x^2"} << QStringList{"x^2"} << "x" << 0;
    QTest::newRow("a blank makes another text")
        << QStringList{"x^2", "x ^2"} << QStringList{"x^2", "x ^2"} << "x" << 0;
    QTest::newRow("second variable is refused")
        << QStringList{"x^2", "t+1@f(t)"} << QStringList{"x^2"} << "x" << 1;
    QTest::newRow("label without parenthesis means x")
        << QStringList{"x+1@f", "x-1@"} << QStringList{"x+1", "x-1"} << "x" << 0;
    QTest::newRow("another variable for the whole list")
        << QStringList{"t^2@g(t)", "sin(t)@f(t)"} << QStringList{"t^2", "sin(t)"} << "t" << 0;
    QTest::newRow("a formula that does not compile")
        << QStringList{"2x+", "x"} << QStringList{"x"} << "x" << 1;
    QTest::newRow("the wrong variable letter is asked about, not told")
        << QStringList{"t+1"} << QStringList{} << "x" << 0;
}

void TestModel::addingFollowsTheListRules()
{
    QFETCH(QStringList, typed);
    QFETCH(QStringList, expectedEntries);
    QFETCH(QString, expectedVariable);
    QFETCH(int, expectedMessages);

    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    for (const QString& entry : typed) {
        const QStringList parts = entry.split(QLatin1Char('@'));
        addFunction(state, prompter, links, parts[0], parts.value(1, QStringLiteral("f(x)")));
    }
    QCOMPARE(entryTexts(state), expectedEntries);
    QCOMPARE(int(state.graphCount), int(expectedEntries.size()));
    QCOMPARE(state.functionItems.size(), std::size_t(expectedEntries.size()));
    QCOMPARE(state.listVariable, expectedVariable);
    QCOMPARE(int(prompter.messages.size()), expectedMessages);
    QCOMPARE(state.documentChanged, !expectedEntries.isEmpty());
    for (const GraphEntry& e : state.graphs)
        QVERIFY(e.formula);
}

void TestModel::pendingIndexesLastOneCall_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("key");
    QTest::addColumn<AddResult>("expected");
    // The link check is asked only for a text that passed every other rule.
    QTest::addColumn<QStringList>("asked");
    QTest::addColumn<bool>("full"); // the list holds as many entries as its 16-bit count can

    const QStringList both{"d x^2 x+1 x", "p x^2 x+1 x"};
    QTest::newRow("added") << "x+1" << "f(x)" << kEnterKey << AddResult::Added << both << false;
    QTest::newRow("duplicate") << "x^2" << "f(x)" << kEnterKey << AddResult::Duplicate << QStringList() << false;
    QTest::newRow("not enter") << "x+1" << "f(x)" << 65 << AddResult::Ignored << QStringList() << false;
    QTest::newRow("other variable") << "t" << "f(t)" << kEnterKey << AddResult::Rejected << QStringList() << false;
    QTest::newRow("no compile") << "x+*" << "f(x)" << kEnterKey << AddResult::Rejected << QStringList() << false;
    QTest::newRow("full list") << "x+1" << "f(x)" << kEnterKey << AddResult::Rejected << QStringList() << true;
}

void TestModel::pendingIndexesLastOneCall()
{
    QFETCH(QString, text);
    QFETCH(QString, label);
    QFETCH(int, key);
    QFETCH(AddResult, expected);
    QFETCH(QStringList, asked);
    QFETCH(bool, full);

    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    links.answer = false;
    addFunction(state, prompter, links, QStringLiteral("x^2"), QStringLiteral("f(x)"));
    if (full) {
        state.graphs.resize(32767);
        state.graphCount = 32767;
    }
    const std::size_t items = state.functionItems.size();
    state.pendingDerivativeOf = 0;
    state.pendingPrimitiveOf = 0;
    QCOMPARE(addFunction(state, prompter, links, text, label, key), expected);
    QCOMPARE(links.asked, asked);
    QCOMPARE(state.functionItems.size(), items + (expected == AddResult::Added));
    QCOMPARE(state.pendingDerivativeOf, -1);
    QCOMPARE(state.pendingPrimitiveOf, -1);
    // A refused link leaves the pending entry unlinked.
    QCOMPARE(state.graphs[0].derivativeIndex, -1);
    QCOMPARE(state.graphs[0].primitiveIndex, -1);
}

void TestModel::linkedEntriesFormATree_data()
{
    QTest::addColumn<QStringList>("steps"); // as addSteps reads them
    QTest::addColumn<QString>("expectedTree");
    // Whether every derivative link is answered by its partner's primitive link (a new
    // primitive of an entry that already had one takes that entry's link over).
    QTest::addColumn<bool>("mirrored");

    QTest::newRow("derivative below its source")
        << QStringList{"x^3", "x", "d:0:3x^2"} << "0:x^3 1:3x^2 0:x" << true;
    QTest::newRow("primitive above its source, chain pushed down")
        << QStringList{"x^3", "d:0:3x^2", "d:1:6x", "p:0:x^4/4"}
        << "0:x^4/4 1:x^3 2:3x^2 3:6x" << true;
    QTest::newRow("primitive of an indented entry keeps that level")
        << QStringList{"x^3", "d:0:3x^2", "p:1:x^3+1"} << "0:x^3 1:x^3+1 2:3x^2" << false;
    QTest::newRow("primitive re-indents only the chain")
        << QStringList{"x", "sin(x)", "p:1:-cos(x)"} << "0:x 0:-cos(x) 1:sin(x)" << true;
}

void TestModel::linkedEntriesFormATree()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, expectedTree);
    QFETCH(bool, mirrored);

    AppState state;
    ScriptedPrompter prompter;
    addSteps(state, prompter, steps);
    QCOMPARE(itemTree(state), expectedTree);
    for (int k = 0; mirrored && k < int(state.graphs.size()); ++k) {
        if (const int d = derivativeOf(state, k); d >= 0)
            QCOMPARE(primitiveOf(state, d), k);
    }
}

void TestModel::removingKeepsStaleLinks_data()
{
    QTest::addColumn<int>("removed");                // out of three entries
    QTest::addColumn<QList<int>>("derivativeLinks"); // per entry, before removal
    QTest::addColumn<QList<int>>("expectedAfter");   // derivative links after removal
    QTest::addColumn<QList<int>>("areaCurves");      // after removal; before: 0, 2, 2, 1

    QTest::newRow("first, a link to 2 stays 2")
        << 0 << QList<int>{-1, 2, -1} << QList<int>{2, -1} << QList<int>{1, 1, 0};
    QTest::newRow("link into the removed entry cleared")
        << 1 << QList<int>{1, -1, -1} << QList<int>{-1, -1} << QList<int>{0, 1, 1};
    QTest::newRow("only the first link into it cleared")
        << 2 << QList<int>{2, 2, -1} << QList<int>{-1, 2} << QList<int>{0, 1};
}

void TestModel::removingKeepsStaleLinks()
{
    QFETCH(int, removed);
    QFETCH(QList<int>, derivativeLinks);
    QFETCH(QList<int>, expectedAfter);
    QFETCH(QList<int>, areaCurves);

    AppState state;
    state.areas = {{0, 1, 2}, {2, 0, 1}, {2, -1, 1}, {1, 3, 4}};
    for (int k = 0; k < 3; ++k) {
        state.graphs.push_back({});
        state.graphs.back().text = QStringLiteral("f%1").arg(k);
        state.graphs.back().derivativeIndex = derivativeLinks[k];
    }
    state.graphCount = 3;
    removeGraphAt(state, removed);

    QCOMPARE(int(state.graphCount), 2);
    QVERIFY(!entryTexts(state).contains(QStringLiteral("f%1").arg(removed)));
    QList<int> after;
    for (const GraphEntry& e : state.graphs)
        after << e.derivativeIndex;
    QCOMPARE(after, expectedAfter);
    QList<int> curves;
    for (const AreaRegion& area : state.areas)
        curves << area.curve;
    QCOMPARE(curves, areaCurves);
}

void TestModel::deletingAnItemLiftsItsChildren_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("expectedTree");
    // The tree: f, two derivatives of it (the later one placed first), the second
    // derivative, and an unrelated function.
    const QString whole = QStringLiteral("0:x^3 1:3x^2+0 1:3x^2 2:6x 0:x");
    QTest::newRow("source: its subtree moves up") << 1 << "0:3x^2+0 0:3x^2 1:6x 0:x";
    QTest::newRow("leaf before a sibling: nothing moves") << 2 << "0:x^3 1:3x^2 2:6x 0:x";
    QTest::newRow("middle: only deeper items move") << 3 << "0:x^3 1:3x^2+0 1:6x 0:x";
    QTest::newRow("unrelated last item") << 5 << "0:x^3 1:3x^2+0 1:3x^2 2:6x";
    QTest::newRow("no such item") << 0 << whole;
    QTest::newRow("past the end") << 6 << whole;
}

void TestModel::deletingAnItemLiftsItsChildren()
{
    QFETCH(int, position);
    QFETCH(QString, expectedTree);
    AppState state;
    ScriptedPrompter prompter;
    addSteps(state, prompter, {"x^3", "d:0:3x^2", "d:1:6x", "x", "d:0:3x^2+0"});
    const bool exists = position >= 1 && position <= 5;
    const QString text = exists ? state.functionItems[std::size_t(position - 1)].text : QString();

    QCOMPARE(deleteFunctionItem(state, position), exists);
    QCOMPARE(itemTree(state), expectedTree);
    QCOMPARE(state.graphs.size(), std::size_t(exists ? 4 : 5));
    QCOMPARE(findGraphByText(state, text), -1);
    // Deleting the last item frees the list's variable.
    while (deleteFunctionItem(state, 1)) {
    }
    QVERIFY(state.graphs.empty() && state.listVariable.isEmpty());
}

void TestModel::editingReplacesInPlace_data()
{
    QTest::addColumn<QStringList>("steps"); // as addSteps reads them
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("linksHold"); // the link check's answer
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("expectedTree");
    QTest::addColumn<QString>("links"); // "derivative,primitive" of the entry afterwards
    QTest::addColumn<double>("valueAt2"); // of the entry's compiled formula afterwards

    const int added = int(AddResult::Added);
    const int rejected = int(AddResult::Rejected);
    QTest::newRow("in its place") << QStringList{"x", "x^2", "x^3"} << 1 << "2x^2" << "f(x)" << true << added
                                  << "0:x 0:2x^2 0:x^3" << "-1,-1" << 8.0;
    QTest::newRow("a derivative that still holds")
        << QStringList{"x^3", "d:0:3x^2"} << 1 << "3*x^2" << "f(x)" << true << added << "0:x^3 1:3*x^2" << "-1,0" << 12.0;
    QTest::newRow("a source whose derivative no longer holds")
        << QStringList{"x^3", "d:0:3x^2"} << 0 << "x^4" << "f(x)" << false << added << "0:x^4 1:3x^2" << "-1,-1" << 16.0;
    QTest::newRow("a text that does not compile")
        << QStringList{"x", "x^2"} << 1 << "2x+" << "f(x)" << true << rejected << "0:x 0:x^2" << "-1,-1" << 4.0;
    QTest::newRow("a function drawn already")
        << QStringList{"x", "x^2"} << 1 << "x" << "f(x)" << true << rejected << "0:x 0:x^2" << "-1,-1" << 4.0;
    QTest::newRow("another variable beside other functions")
        << QStringList{"x", "x^2"} << 1 << "t^2" << "f(t)" << true << rejected << "0:x 0:x^2" << "-1,-1" << 4.0;
    QTest::newRow("another variable for the only function")
        << QStringList{"x^2"} << 0 << "t^2" << "f(t)" << true << added << "0:t^2" << "-1,-1" << 4.0;
}

void TestModel::editingReplacesInPlace()
{
    QFETCH(QStringList, steps);
    QFETCH(int, entry);
    QFETCH(QString, text);
    QFETCH(QString, label);
    QFETCH(bool, linksHold);
    QFETCH(int, result);
    QFETCH(QString, expectedTree);
    QFETCH(QString, links);
    QFETCH(double, valueAt2);

    AppState state;
    ScriptedPrompter prompter;
    addSteps(state, prompter, steps);
    state.graphs[std::size_t(entry)].color = 0x123456;
    GraphMark tangent;
    tangent.x = 0.5;
    state.graphs[std::size_t(entry)].marks.push_back(tangent);
    const QString before = itemTree(state);
    FakeLinks check;
    check.answer = linksHold;
    QCOMPARE(int(replaceFunction(state, prompter, check, entry, text, label)), result);
    QCOMPARE(itemTree(state), expectedTree);
    QCOMPARE(prompter.messages.isEmpty(), result != int(AddResult::Rejected));
    const GraphEntry& edited = state.graphs[std::size_t(entry)];
    QCOMPARE(edited.color, 0x123456u); // colour and tangents stay with the entry
    QCOMPARE(edited.marks.size(), std::size_t(1));
    QCOMPARE(QStringLiteral("%1,%2").arg(derivativeOf(state, entry)).arg(primitiveOf(state, entry)), links);
    QCOMPARE(edited.formula->evaluate(2), valueAt2);
    if (result == int(AddResult::Added))
        QCOMPARE(state.listVariable, label.mid(2, 1));
    else
        QCOMPARE(itemTree(state), before);
}

void TestModel::newFunctionsTakeTheirColour_data()
{
    QTest::addColumn<bool>("autoColors");
    QTest::addColumn<int>("count");
    QTest::newRow("a colour chosen after two curves") << false << 3;
    QTest::newRow("the palette, round and again") << true << 10;
}

void TestModel::newFunctionsTakeTheirColour()
{
    QFETCH(bool, autoColors);
    QFETCH(int, count);
    AppState state;
    state.autoColors = autoColors;
    ScriptedPrompter prompter;
    FakeLinks links;
    for (int i = 1; i <= count; ++i) {
        state.functionColor = i <= 2 ? 0x00FF00u : 0xFF0000u;
        QCOMPARE(addFunction(state, prompter, links, QString::number(i) + "x", "f(x)"), AddResult::Added);
    }
    QList<quint32> colors;
    for (const GraphEntry& e : state.graphs)
        colors << e.color;
    if (!autoColors) {
        QCOMPARE(colors, (QList<quint32>{0x00FF00, 0x00FF00, 0xFF0000}));
        return;
    }
    QCOMPARE(colors.mid(8), colors.mid(0, 2)); // the ninth starts the palette again
    // The eight stay apart in greyscale print: grey levels at least 24 of 255 apart.
    QList<double> greys;
    for (quint32 c : colors.mid(0, 8))
        greys << 0.299 * (c & 0xFF) + 0.587 * ((c >> 8) & 0xFF) + 0.114 * (c >> 16);
    std::sort(greys.begin(), greys.end());
    for (qsizetype i = 1; i < greys.size(); ++i)
        QVERIFY2(greys[i] - greys[i - 1] >= 24, qPrintable(QString::number(greys[i])));
    // A deleted curve's colour is the next one taken.
    removeGraphAt(state, 4);
    QCOMPARE(colorForNewFunction(state), colors[4]);
}

void TestModel::undeclaredLettersAreOffered_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("answers"); // y or n for each question
    QTest::addColumn<QStringList>("expectedEntries");
    QTest::addColumn<QString>("expectedParameters");
    QTest::addColumn<int>("expectedQuestions");
    QTest::addColumn<int>("expectedMessages");

    QTest::newRow("yes declares it") << QStringList{"sin(bx)"} << "y" << QStringList{"sin(bx)"} << "b" << 1 << 0;
    QTest::newRow("no refuses, no second box") << QStringList{"sin(bx)"} << "n" << QStringList{} << "" << 1 << 0;
    QTest::newRow("several letters, one question")
        << QStringList{"ax^2+bx+c"} << "y" << QStringList{"ax^2+bx+c"} << "abc" << 1 << 0;
    QTest::newRow("a declared letter is not asked again")
        << QStringList{"a*x", "ax^2", "a+b"} << "yn" << QStringList{"a*x", "ax^2"} << "a" << 2 << 0;
    QTest::newRow("a real mistake stays one") << QStringList{"xsin(x)"} << "" << QStringList{} << "" << 0 << 1;
}

void TestModel::undeclaredLettersAreOffered()
{
    QFETCH(QStringList, typed);
    QFETCH(QString, answers);
    QFETCH(QStringList, expectedEntries);
    QFETCH(QString, expectedParameters);
    QFETCH(int, expectedQuestions);
    QFETCH(int, expectedMessages);

    AppState state;
    ScriptedPrompter prompter;
    for (QChar a : answers)
        prompter.answers.push_back(a == u'y' ? Prompter::Button::Yes : Prompter::Button::No);
    FakeLinks links;
    for (const QString& text : typed)
        addFunction(state, prompter, links, text, QStringLiteral("f(x)"));
    QCOMPARE(entryTexts(state), expectedEntries);
    QString names;
    for (const eval::Parameter& p : state.parameters)
        names += p.name;
    QCOMPARE(names, expectedParameters);
    QCOMPARE(int(prompter.questions.size()), expectedQuestions);
    QCOMPARE(int(prompter.messages.size()), expectedMessages);
}

void TestModel::parameterEdits_data()
{
    QTest::addColumn<QString>("operation"); // add, change or remove
    QTest::addColumn<int>("index");
    QTest::addColumn<eval::Parameter>("parameter");
    QTest::addColumn<QString>("message"); // "" when it is done

    using P = eval::Parameter;
    QTest::newRow("a value beyond the bounds is kept") << "add" << -1 << P{"d", 9, 0, 1, 0.5} << "";
    QTest::newRow("a name taken") << "add" << -1 << P{"a"} << "There is a parameter a already.";
    QTest::newRow("e") << "add" << -1 << P{"e"} << "'e' cannot be a parameter";
    QTest::newRow("not a number") << "add" << -1 << P{"d", qQNaN()} << "must be numbers";
    QTest::newRow("minimum at maximum") << "add" << -1 << P{"d", 1, 2, 2} << "minimum of d must be less";
    QTest::newRow("a step of 0") << "add" << -1 << P{"d", 1, -5, 5, 0} << "step of d must be greater than 0";
    QTest::newRow("new value and bounds") << "change" << 1 << P{"b", 2, -1, 3, 0.5} << "";
    QTest::newRow("an unused one renamed") << "change" << 2 << P{"k"} << "";
    QTest::newRow("a used one renamed") << "change" << 0 << P{"k"} << "a cannot be renamed: a*x uses it";
    QTest::newRow("a used one deleted") << "remove" << 1 << P{} << "b cannot be deleted: 2b*x+1 and sin(b*x) use it";
    QTest::newRow("an unused one deleted") << "remove" << 2 << P{} << "";
}

void TestModel::parameterEdits()
{
    QFETCH(QString, operation);
    QFETCH(int, index);
    QFETCH(eval::Parameter, parameter);
    QFETCH(QString, message);

    AppState state;
    ScriptedPrompter prompter;
    for (const char* name : {"a", "b", "c"})
        QVERIFY(addParameter(state, prompter, {QString::fromLatin1(name)}));
    addSteps(state, prompter, {"a*x", "2b*x+1", "sin(b*x)"});
    const eval::ParameterList before = state.parameters;
    const bool done = operation == u"add"      ? addParameter(state, prompter, parameter)
                      : operation == u"change" ? changeParameter(state, prompter, index, parameter)
                                               : removeParameter(state, prompter, index);
    QCOMPARE(done, message.isEmpty());
    QCOMPARE(prompter.messages.size(), done ? 0 : 1);
    if (!done) {
        QVERIFY2(prompter.messages[0].contains(message), qPrintable(prompter.messages[0]));
        QVERIFY(state.parameters == before);
    } else if (operation == u"remove") {
        QCOMPARE(eval::parameterIndex(state.parameters, before[std::size_t(index)].name), -1);
    } else {
        QCOMPARE(state.parameters[index < 0 ? state.parameters.size() - 1 : std::size_t(index)], parameter);
        // A new value reaches the functions that use it.
        QCOMPARE(state.graphs[1].formula->evaluate(1), 2 * state.parameters[1].value + 1);
    }
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
