#include "model/graph_list.h"
#include "scripted_prompter.h"

#include <QTest>

using namespace curvix::model;

namespace {

// Answers every link question alike and records each as "d|p source candidate variable".
class FakeLinks : public LinkCheck {
public:
    explicit FakeLinks(bool answer = true) : m_answer(answer) {}
    QStringList asked;

    bool isDerivativeOf(const QString& source, const QString& candidate, const QString& variable) override
    {
        return record(QStringLiteral("d"), source, candidate, variable);
    }
    bool isPrimitiveOf(const QString& source, const QString& candidate, const QString& variable) override
    {
        return record(QStringLiteral("p"), source, candidate, variable);
    }

private:
    bool record(const QString& kind, const QString& source, const QString& candidate,
                const QString& variable)
    {
        asked << QStringList{kind, source, candidate, variable}.join(QLatin1Char(' '));
        return m_answer;
    }
    bool m_answer;
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

} // namespace

class TestModel : public QObject {
    Q_OBJECT

private slots:
    void addingFollowsTheListRules_data();
    void addingFollowsTheListRules();
    void pendingIndexesLastOneCall_data();
    void pendingIndexesLastOneCall();
    void newEntryTakesTheCurrentFunctionColour();
    void aFullListRefusesTheEntry();
    void linkedEntriesFormATree_data();
    void linkedEntriesFormATree();
    void removingKeepsStaleLinks_data();
    void removingKeepsStaleLinks();
    void lookups();
    void deletingAnItemLiftsItsChildren_data();
    void deletingAnItemLiftsItsChildren();
};

void TestModel::addingFollowsTheListRules_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QStringList>("expectedEntries");
    QTest::addColumn<QString>("expectedVariable");
    QTest::addColumn<int>("expectedMessages");

    const QString fx = QStringLiteral("f(x)");
    QTest::newRow("one function") << QStringList{"2x^2+1"} << QStringList{fx}
                                  << QStringList{"2x^2+1"} << "x" << 0;
    QTest::newRow("empty text adds nothing")
        << QStringList{""} << QStringList{fx} << QStringList{} << "" << 0;
    QTest::newRow("same text twice is one entry")
        << QStringList{"x^2", "x^2"} << QStringList{fx, fx} << QStringList{"x^2"} << "x" << 0;
    QTest::newRow("a blank makes another text")
        << QStringList{"x^2", "x ^2"} << QStringList{fx, fx} << QStringList{"x^2", "x ^2"}
        << "x" << 0;
    QTest::newRow("second variable is refused")
        << QStringList{"x^2", "t+1"} << QStringList{fx, "f(t)"} << QStringList{"x^2"} << "x"
        << 1;
    QTest::newRow("label without parenthesis means x")
        << QStringList{"x+1", "x-1"} << QStringList{"f", ""} << QStringList{"x+1", "x-1"}
        << "x" << 0;
    QTest::newRow("another variable for the whole list")
        << QStringList{"t^2", "sin(t)"} << QStringList{"g(t)", "f(t)"}
        << QStringList{"t^2", "sin(t)"} << "t" << 0;
    QTest::newRow("a formula that does not compile")
        << QStringList{"2x+", "x"} << QStringList{fx, fx} << QStringList{"x"} << "x" << 1;
    QTest::newRow("the wrong variable letter does not compile")
        << QStringList{"t+1"} << QStringList{fx} << QStringList{} << "x" << 1;
}

void TestModel::addingFollowsTheListRules()
{
    QFETCH(QStringList, texts);
    QFETCH(QStringList, labels);
    QFETCH(QStringList, expectedEntries);
    QFETCH(QString, expectedVariable);
    QFETCH(int, expectedMessages);

    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    for (qsizetype i = 0; i < texts.size(); ++i)
        addFunction(state, prompter, links, texts[i], labels[i]);

    QCOMPARE(entryTexts(state), expectedEntries);
    QCOMPARE(int(state.graphCount), int(expectedEntries.size()));
    QCOMPARE(state.functionItems.size(), std::size_t(expectedEntries.size()));
    QCOMPARE(state.listVariable, expectedVariable);
    QCOMPARE(int(prompter.messages.size()), expectedMessages);
    QCOMPARE(state.documentChanged, !expectedEntries.isEmpty());
    if (QTest::currentDataTag() == QByteArray("second variable is refused"))
        QCOMPARE(prompter.messages.value(0), QStringLiteral("Endast en variabel per omgång"));
    for (const GraphEntry& e : state.graphs) {
        QVERIFY(!e.expression.isEmpty());
        QCOMPARE(e.derivativeIndex, -1);
        QCOMPARE(e.primitiveIndex, -1);
    }
}

void TestModel::pendingIndexesLastOneCall_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("key");
    QTest::addColumn<AddResult>("expected");
    // The link check is asked only for a text that passed every other rule.
    QTest::addColumn<QStringList>("asked");

    const QStringList both{"d x^2 x+1 x", "p x^2 x+1 x"};
    QTest::newRow("added") << "x+1" << "f(x)" << kEnterKey << AddResult::Added << both;
    QTest::newRow("duplicate") << "x^2" << "f(x)" << kEnterKey << AddResult::Duplicate << QStringList();
    QTest::newRow("empty") << "" << "f(x)" << kEnterKey << AddResult::Ignored << QStringList();
    QTest::newRow("not enter") << "x+1" << "f(x)" << 65 << AddResult::Ignored << QStringList();
    QTest::newRow("other variable") << "t" << "f(t)" << kEnterKey << AddResult::Rejected << QStringList();
    QTest::newRow("no compile") << "x+*" << "f(x)" << kEnterKey << AddResult::Rejected << QStringList();
}

void TestModel::pendingIndexesLastOneCall()
{
    QFETCH(QString, text);
    QFETCH(QString, label);
    QFETCH(int, key);
    QFETCH(AddResult, expected);
    QFETCH(QStringList, asked);

    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links(false);
    addFunction(state, prompter, links, QStringLiteral("x^2"), QStringLiteral("f(x)"));
    state.pendingDerivativeOf = 0;
    state.pendingPrimitiveOf = 0;
    QCOMPARE(addFunction(state, prompter, links, text, label, key), expected);
    QCOMPARE(links.asked, asked);
    QCOMPARE(state.pendingDerivativeOf, -1);
    QCOMPARE(state.pendingPrimitiveOf, -1);
    // A refused link leaves the pending entry unlinked.
    QCOMPARE(state.graphs[0].derivativeIndex, -1);
    QCOMPARE(state.graphs[0].primitiveIndex, -1);
}

void TestModel::newEntryTakesTheCurrentFunctionColour()
{
    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    addFunction(state, prompter, links, QStringLiteral("x"), QStringLiteral("f(x)"));
    state.functionColor = 0x00FF0000;
    addFunction(state, prompter, links, QStringLiteral("x+1"), QStringLiteral("f(x)"));
    QCOMPARE(state.graphs[0].color, 0u);
    QCOMPARE(state.graphs[1].color, 0x00FF0000u);
}

void TestModel::aFullListRefusesTheEntry()
{
    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    state.graphs.resize(32767);
    state.graphCount = 32767;
    state.listVariable = QStringLiteral("x");
    state.pendingDerivativeOf = 3;
    QCOMPARE(addFunction(state, prompter, links, QStringLiteral("x"), QStringLiteral("f(x)")),
             AddResult::Rejected);
    QCOMPARE(prompter.messages, QStringList{QStringLiteral("Overflow")});
    QCOMPARE(state.graphs.size(), std::size_t(32767));
    QCOMPARE(int(state.graphCount), 32767);
    QVERIFY(state.functionItems.empty());
    QCOMPARE(state.graphs[3].derivativeIndex, -1);
    QCOMPARE(state.pendingDerivativeOf, -1);
}

void TestModel::linkedEntriesFormATree_data()
{
    // Each step: "d:K:text" adds text as the derivative of entry K, "p:K:text" as a
    // primitive of entry K, plain text as an ordinary function.
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("expectedTree");
    // Whether every derivative link is answered by its partner's primitive link (a new
    // primitive of an entry that already had one takes that entry's link over).
    QTest::addColumn<bool>("mirrored");

    QTest::newRow("derivative below its source")
        << QStringList{"x^3", "x", "d:0:3x^2"} << "0:x^3 1:3x^2 0:x" << true;
    QTest::newRow("second derivative one level deeper")
        << QStringList{"x^3", "d:0:3x^2", "d:1:6x"} << "0:x^3 1:3x^2 2:6x" << true;
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
    for (const QString& step : steps) {
        const QStringList parts = step.split(QLatin1Char(':'));
        if (parts.size() == 3)
            (parts[0] == QLatin1String("d") ? state.pendingDerivativeOf
                                            : state.pendingPrimitiveOf) = parts[1].toInt();
        const QString text = parts.last();
        FakeLinks links;
        QCOMPARE(addFunction(state, prompter, links, text, QStringLiteral("f(x)")), AddResult::Added);
    }
    QCOMPARE(itemTree(state), expectedTree);
    QVERIFY(prompter.messages.isEmpty());

    for (int k = 0; mirrored && k < int(state.graphs.size()); ++k) {
        if (const int d = derivativeOf(state, k); d >= 0)
            QCOMPARE(primitiveOf(state, d), k);
    }
}

void TestModel::removingKeepsStaleLinks_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("removed");
    QTest::addColumn<QList<int>>("derivativeLinks"); // per entry, before removal
    QTest::addColumn<QList<int>>("expectedAfter");   // derivative links after removal
    QTest::addColumn<QStringList>("expectedTexts");

    QTest::newRow("first of three, a link to 2 stays 2")
        << 3 << 0 << QList<int>{-1, 2, -1} << QList<int>{2, -1} << QStringList{"f1", "f2"};
    QTest::newRow("link into the removed entry cleared")
        << 3 << 1 << QList<int>{1, -1, -1} << QList<int>{-1, -1} << QStringList{"f0", "f2"};
    QTest::newRow("only the first link into it cleared")
        << 3 << 2 << QList<int>{2, 2, -1} << QList<int>{-1, 2} << QStringList{"f0", "f1"};
    QTest::newRow("the only entry")
        << 1 << 0 << QList<int>{-1} << QList<int>{} << QStringList{};
}

void TestModel::removingKeepsStaleLinks()
{
    QFETCH(int, count);
    QFETCH(int, removed);
    QFETCH(QList<int>, derivativeLinks);
    QFETCH(QList<int>, expectedAfter);
    QFETCH(QStringList, expectedTexts);

    AppState state;
    for (int k = 0; k < count; ++k) {
        GraphEntry e;
        e.text = QStringLiteral("f%1").arg(k);
        e.derivativeIndex = derivativeLinks[k];
        state.graphs.push_back(e);
    }
    state.graphCount = qint16(count);
    removeGraphAt(state, removed);

    QCOMPARE(entryTexts(state), expectedTexts);
    QCOMPARE(int(state.graphCount), int(expectedTexts.size()));
    QList<int> after;
    for (const GraphEntry& e : state.graphs)
        after << e.derivativeIndex;
    QCOMPARE(after, expectedAfter);
    if (count == 1)
        QCOMPARE(state.graphs.capacity(), std::size_t(0));
}

void TestModel::lookups()
{
    {
        // Deleting the last item frees the variable; New empties everything.
        AppState state;
        ScriptedPrompter prompter;
        FakeLinks links;
        addFunction(state, prompter, links, QStringLiteral("t"), QStringLiteral("f(t)"));
        QVERIFY(deleteFunctionItem(state, 1));
        QVERIFY(state.listVariable.isEmpty());
        addFunction(state, prompter, links, QStringLiteral("x"), QStringLiteral("f(x)"));
        state.fills.push_back({});
        state.verticalLines.push_back(1);
        clearDrawing(state);
        QVERIFY(state.graphs.empty() && state.functionItems.empty() && state.fills.empty() &&
                state.verticalLines.empty() && state.listVariable.isEmpty());
        QCOMPARE(int(state.graphCount), 0);
        QVERIFY(!state.documentChanged);
    }

    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    QCOMPARE(findGraphByText(state, QStringLiteral("x")), -1);
    QVERIFY(!graphExists(state, QStringLiteral("x")));
    for (const char* text : {"x", "X", "x^2"})
        addFunction(state, prompter, links, QString::fromLatin1(text), QStringLiteral("f(x)"));
    QCOMPARE(findGraphByText(state, QStringLiteral("x^2")), 1);
    QCOMPARE(findItemByText(state, QStringLiteral("x^2")), 2);
    QCOMPARE(findItemByText(state, QStringLiteral("X")), -1);
    QVERIFY(graphExists(state, QStringLiteral("x")));
    QVERIFY(!graphExists(state, QStringLiteral("x ")));
}

void TestModel::deletingAnItemLiftsItsChildren_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("expectedTree");
    QTest::addColumn<QStringList>("expectedEntries");
    // The tree: f, its derivative and second derivative, and an unrelated function.
    QTest::newRow("source: the chain moves up") << 1 << "0:3x^2 1:6x 0:x" << QStringList{"3x^2", "6x", "x"};
    QTest::newRow("middle: only deeper items move") << 2 << "0:x^3 1:6x 0:x" << QStringList{"x^3", "6x", "x"};
    QTest::newRow("leaf") << 3 << "0:x^3 1:3x^2 0:x" << QStringList{"x^3", "3x^2", "x"};
    QTest::newRow("unrelated last item") << 4 << "0:x^3 1:3x^2 2:6x" << QStringList{"x^3", "3x^2", "6x"};
    QTest::newRow("no such item") << 0 << "0:x^3 1:3x^2 2:6x 0:x" << QStringList{"x^3", "3x^2", "6x", "x"};
    QTest::newRow("past the end") << 5 << "0:x^3 1:3x^2 2:6x 0:x" << QStringList{"x^3", "3x^2", "6x", "x"};
}

void TestModel::deletingAnItemLiftsItsChildren()
{
    QFETCH(int, position);
    QFETCH(QString, expectedTree);
    QFETCH(QStringList, expectedEntries);
    AppState state;
    ScriptedPrompter prompter;
    FakeLinks links;
    addFunction(state, prompter, links, QStringLiteral("x^3"), QStringLiteral("f(x)"));
    state.pendingDerivativeOf = 0;
    addFunction(state, prompter, links, QStringLiteral("3x^2"), QStringLiteral("f(x)"));
    state.pendingDerivativeOf = 1;
    addFunction(state, prompter, links, QStringLiteral("6x"), QStringLiteral("f(x)"));
    addFunction(state, prompter, links, QStringLiteral("x"), QStringLiteral("f(x)"));

    QCOMPARE(deleteFunctionItem(state, position), position >= 1 && position <= 4);
    QCOMPARE(itemTree(state), expectedTree);
    QCOMPARE(entryTexts(state), expectedEntries);
    QCOMPARE(state.listVariable, QStringLiteral("x"));
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
