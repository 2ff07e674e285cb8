#include "model/drawing_file.h"
#include "model/graph_list.h"
#include "model/parameter_list.h"
#include "plot/coordinates.h"
#include "plot/render.h"
#include "scripted_prompter.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <functional>

using namespace curvix;
using Change = std::function<void(model::AppState&, model::Drawing&)>;
Q_DECLARE_METATYPE(Change)

// The drawing file: every field survives save and open, and a bad file is refused whole.
class TestDrawingFile : public QObject {
    Q_OBJECT

private slots:
    void roundTrip_data();
    void roundTrip();
    void numbersKeepEveryBit_data();
    void numbersKeepEveryBit();
    void refused_data();
    void refused();
    void cutAtEveryByteIsRefused();
    void files();
    void aParameterValueMovesItsCurves();
};

namespace {

// Agrees to every link, so that a derivative or primitive is linked as the window links it.
class YesLinks final : public model::LinkCheck {
public:
    bool isDerivativeOf(const QString&, const QString&, const QString&) override { return true; }
    bool isPrimitiveOf(const QString&, const QString&, const QString&) override { return true; }
};

void add(model::AppState& state, const QString& text, const QString& label = QStringLiteral("f(x)"))
{
    ScriptedPrompter prompter;
    YesLinks links;
    QCOMPARE(model::addFunction(state, prompter, links, text, label), model::AddResult::Added);
}

// A state as the program starts with it.
struct FreshState : model::AppState {
    FreshState() { plot::InitPlotDefaults(*this); }
};

model::GraphMark mark(double x)
{
    model::GraphMark m;
    m.text = QStringLiteral("x");
    m.x = x;
    return m;
}

// The state's drawing with the window's part (display and labels) of the given one.
model::Drawing drawingOf(const model::AppState& state, const model::Drawing& window)
{
    model::Drawing d = model::drawingFromState(state);
    d.display = window.display;
    d.textLabels = window.textLabels;
    d.pointLabels = window.pointLabels;
    d.formulaPictures = window.formulaPictures;
    return d;
}

QImage picture(model::AppState& state, const model::DrawingDisplay& display)
{
    QImage image(320, 240, QImage::Format_ARGB32_Premultiplied);
    plot::redraw(state, image, plot::redrawOptionsFor(display, QGuiApplication::font()));
    return image;
}

// A small drawing with something in every list, written as the file's JSON object.
QJsonObject sampleObject()
{
    FreshState state;
    add(state, QStringLiteral("x^2-2"));
    state.pendingDerivativeOf = 0;
    add(state, QStringLiteral("2x"));
    state.graphs[0].marks.push_back(mark(1.5));
    state.verticalLines = {1};
    state.fills = {{0.5, 3, 0xFF}};
    model::Drawing d = model::drawingFromState(state);
    d.textLabels = {{QStringLiteral("top"), -4, 4}};
    d.pointLabels = {{1, QStringLiteral("(1, 2)"), 1, 2}};
    d.formulaPictures = {{QStringLiteral("x^2"), QStringLiteral("f(x)"), 2, -1}};
    return QJsonDocument::fromJson(model::writeDrawing(d)).object();
}

} // namespace

void TestDrawingFile::roundTrip_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, Change change) { QTest::newRow(name) << change; };
    row("empty drawing", [](model::AppState&, model::Drawing&) {});
    row("functions, colours and tangents", [](model::AppState& s, model::Drawing&) {
        add(s, QStringLiteral("sin(x)"));
        s.functionColor = 0x00FF00;
        add(s, QStringLiteral("x^3/4-x"));
        s.graphs[1].marks = {mark(-1.25), mark(0.1)};
    });
    row("derivative and primitive links, then a deletion", [](model::AppState& s, model::Drawing&) {
        add(s, QStringLiteral("x^2"));
        s.pendingDerivativeOf = 0;
        add(s, QStringLiteral("2x"));
        s.pendingPrimitiveOf = 0;
        add(s, QStringLiteral("x^3/3"));
        add(s, QStringLiteral("cos(x)"));
        QVERIFY(model::deleteFunctionItem(s, model::findItemByText(s, QStringLiteral("2x"))));
    });
    row("another variable", [](model::AppState& s, model::Drawing&) {
        add(s, QStringLiteral("t^2-1"), QStringLiteral("g(t)"));
    });
    row("view and zoom history", [](model::AppState& s, model::Drawing&) {
        add(s, QStringLiteral("1/x"));
        s.zoomHistory = {s.view, {-2, 2, 0.5, 1, -1, 1, 0.25, 1}, {9, 9, 9, 9, 9, 9, 9, 9}};
        s.zoomCount = 2; // the third record can never be stepped back to
        s.view = {0.1, 0.30000000000000004, 0.05, 2, -1e-3, 1e-3, 5e-4, 1};
        s.startView = {-7, 7, 1, 1, -3, 3, 1, 1};
    });
    row("degrees, exact trig and fraction form", [](model::AppState& s, model::Drawing& d) {
        s.angleUnit = model::AngleUnit::Degrees;
        s.view = {-180, 180, 90, 1, -3, 3, 1, 1};
        add(s, QStringLiteral("sin(x)"));
        d.display.exactTrig = true;
        d.display.fractionForm = true;
    });
    row("colours, font, switches and separator", [](model::AppState& s, model::Drawing& d) {
        s.gridColor = 0x00C0C0C0;
        s.axisColor = 0x00800000;
        s.fillColor = 0x0000FFFF;
        s.tangentColor = model::kButtonShadowColor;
        s.autoColors = true;
        add(s, QStringLiteral("x"));
        add(s, QStringLiteral("-x"));
        s.arrows = {false, true, true, false};
        s.coordinateSeparator = QStringLiteral(";");
        d.display = {false, false, false, false, false, 17};
    });
    row("parameters and areas", [](model::AppState& s, model::Drawing&) {
        s.parameters = {{QStringLiteral("a"), 2, -3, 3, 0.5}, {QStringLiteral("b"), 9, -5, 5, 0.1}};
        add(s, QStringLiteral("a*sin(bx)"));
        add(s, QStringLiteral("x^2"));
        s.areas = {{1, -1, 2}, {0, 0.5, 1e-3}};
    });
    row("guide lines, fills and labels", [](model::AppState& s, model::Drawing& d) {
        add(s, QStringLiteral("x^2-4"));
        s.verticalLines = {-0.0, 2.5, 1e-300};
        s.horizontalLines = {1e300, -1};
        s.fills = {{0, -1, 0xFF0000}, {3, 3, 0x00FF00}, {1e300, 0, 1}};
        d.textLabels = {{QStringLiteral("Parabel ✓"), -4, 4}};
        d.pointLabels = {{0, QStringLiteral("(2; 0)"), 2, 0}};
        d.formulaPictures = {{QStringLiteral("x^2-4"), QStringLiteral("f(x)"), 1, -2}};
    });
}

void TestDrawingFile::roundTrip()
{
    QFETCH(Change, change);
    FreshState state;
    model::Drawing window;
    change(state, window);
    const model::Drawing saved = drawingOf(state, window);
    const QByteArray bytes = model::writeDrawing(saved);

    QString error;
    const std::optional<model::Drawing> read = model::readDrawing(bytes, &error);
    QVERIFY2(read, qPrintable(error));
    FreshState opened;
    QVERIFY2(model::applyDrawing(opened, *read, &error), qPrintable(error));
    QVERIFY(drawingOf(opened, *read) == saved);
    QCOMPARE(opened.graphCount, state.graphCount);
    QCOMPARE(model::writeDrawing(drawingOf(opened, *read)), bytes);
    QCOMPARE(picture(opened, read->display), picture(state, window.display));
}

void TestDrawingFile::numbersKeepEveryBit_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected");
    for (double v : {0.1, 0.30000000000000004, 1e-300, 4.9406564584124654e-324, 1e300,
                     -123456789.123456789, 2.0 / 3.0, 9007199254740993.0, 1e16})
        QTest::addRow("%.17g", v) << v << v;
    QTest::newRow("-0 is written as 0") << -0.0 << 0.0;
}

void TestDrawingFile::numbersKeepEveryBit()
{
    QFETCH(double, value);
    QFETCH(double, expected);
    model::Drawing d;
    d.verticalLines = {value};
    d.fills = {{value, value, 0}};
    const std::optional<model::Drawing> read = model::readDrawing(model::writeDrawing(d));
    QVERIFY(read);
    for (double got : {read->verticalLines.at(0), read->fills.at(0).x})
        QVERIFY2(std::memcmp(&got, &expected, sizeof got) == 0, qPrintable(QString::number(got, 'g', 17)));
}

void TestDrawingFile::refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");
    const auto edited = [](const char* name, const char* message, const auto& edit) {
        QJsonObject root = sampleObject();
        edit(root);
        QTest::newRow(name) << QJsonDocument(root).toJson() << QString::fromUtf8(message);
    };
    const auto set = [](const QString& object, const char* key, QJsonValue v) {
        return [=](QJsonObject& root) {
            QJsonObject o = root[object].toObject();
            o[QLatin1String(key)] = v;
            root[object] = o;
        };
    };
    const auto function = [](const char* key, QJsonValue v) { // Undefined removes the key
        return [=](QJsonObject& root) {
            QJsonArray list = root[QLatin1String("functions")].toArray();
            QJsonObject f = list[0].toObject();
            f.insert(QLatin1String(key), v);
            list[0] = f;
            root[QLatin1String("functions")] = list;
        };
    };
    QTest::newRow("plain text") << QByteArray("f(x) = x^2\n") << "not a Curvix drawing";
    QTest::newRow("a list") << QByteArray("[1, 2]") << "not a Curvix drawing";
    QTest::newRow("NaN") << QByteArray("{\"format\": \"curvix-drawing\", \"version\": NaN}") << "damaged";
    edited("other format", "not a Curvix drawing", [](QJsonObject& r) { r["format"] = "kurvix"; });
    edited("newer version", "newer Curvix (format version 7)", [](QJsonObject& r) { r["version"] = 7; });
    edited("version as text", "field 'version' is not a number", [](QJsonObject& r) { r["version"] = "1"; });
    edited("no view", "field 'view' is missing", [](QJsonObject& r) { r.remove("view"); });
    edited("xMax as text", "field 'view.xMax' is not a number", set("view", "xMax", "5"));
    edited("1e308 in the view", "field 'view.xMin' is out of range", set("view", "xMin", -1e308));
    edited("reversed view", "field 'view' is not a usable range", set("view", "xMin", 6));
    edited("bad zoom record", "field 'zoomHistory[0]' is not an object", [](QJsonObject& r) { r["zoomHistory"] = QJsonArray{1}; });
    edited("text missing", "field 'functions[0].text' is missing", function("text", QJsonValue::Undefined));
    edited("colour below 0", "field 'functions[0].color' is not a whole number", function("color", -1));
    edited("tangent as text", "field 'functions[0].tangents[0]' is not a number", function("tangents", QJsonArray{"1"}));
    edited("switch as number", "field 'display.grid' is not true or false", set("display", "grid", 1));
    edited("unknown angle unit", "field 'angleUnit' is not radians", [](QJsonObject& r) { r["angleUnit"] = "turns"; });
    edited("fill without y", "field 'fills[0].y' is missing", [](QJsonObject& r) { r["fills"] = QJsonArray{QJsonObject{{"x", 1}}}; });
    edited("huge list", "field 'horizontalLines' has too many entries", [](QJsonObject& r) {
        r["horizontalLines"] = QJsonArray::fromVariantList(QVariantList(100001, 1.0));
    });
    const auto parameter = [](const char* key, QJsonValue v, int copies = 1) {
        return [=](QJsonObject& root) {
            QJsonObject p{{"name", "a"}, {"value", 1}, {"min", -5}, {"max", 5}, {"step", 0.1}};
            p.insert(QLatin1String(key), v);
            root["parameters"] = QJsonArray::fromVariantList(QVariantList(copies, p.toVariantMap()));
        };
    };
    edited("parameter of two letters", "field 'parameters[0].name' is not a small letter", parameter("name", "ab"));
    edited("parameter declared twice", "field 'parameters[1].name' names a parameter declared before", parameter("name", "a", 2));
    edited("parameter range reversed", "field 'parameters[0].min' is not below max", parameter("min", 5));
    edited("parameter step of 0", "field 'parameters[0].step' is not greater than 0", parameter("step", 0));
    edited("area on a missing curve", "field 'areas[0].curve' is not a whole number from 0 to 1", [](QJsonObject& r) {
        r["areas"] = QJsonArray{QJsonObject{{"curve", 2}, {"a", 0}, {"b", 1}}};
    });
    edited("a letter not declared", "function 1 'a*x' uses a, which the drawing does not declare", function("text", "a*x"));
    edited("formula that does not compile", "function 1 '2x+' cannot be drawn", function("text", "2x+"));
    edited("two variables", "function 2 't' cannot be drawn", [](QJsonObject& r) {
        r["functions"] = QJsonArray{QJsonObject{{"text", "x"}}, QJsonObject{{"text", "t"}, {"variable", "t"}}};
    });
}

void TestDrawingFile::refused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    FreshState state;
    add(state, QStringLiteral("cos(x)"));
    state.fills = {{1, 1, 7}};
    const QByteArray before = model::writeDrawing(model::drawingFromState(state));

    QString error;
    const std::optional<model::Drawing> read = model::readDrawing(bytes, &error);
    QVERIFY(!read || !model::applyDrawing(state, *read, &error));
    QVERIFY2(error.contains(message), qPrintable(error));
    QCOMPARE(model::writeDrawing(model::drawingFromState(state)), before);
}

void TestDrawingFile::cutAtEveryByteIsRefused()
{
    const QByteArray bytes = QJsonDocument(sampleObject()).toJson();
    const qsizetype lastBrace = bytes.lastIndexOf('}');
    for (qsizetype n = 0; n <= lastBrace; ++n) {
        QString error;
        QVERIFY2(!model::readDrawing(bytes.left(n), &error) && !error.isEmpty(), qPrintable(QString::number(n)));
    }
    QVERIFY(model::readDrawing(bytes.left(lastBrace + 1)));
}

void TestDrawingFile::files()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("parabel.curvix"));
    const std::optional<model::Drawing> sample = model::readDrawing(QJsonDocument(sampleObject()).toJson());
    QVERIFY(sample);
    QString error;
    QVERIFY2(model::saveDrawingFile(path, *sample, &error), qPrintable(error));
    QVERIFY(model::openDrawingFile(path, &error) == sample);

    // A save that fails leaves no trace; its message names the file.
    const QString lost = dir.filePath(QStringLiteral("no/such/folder/a.curvix"));
    QVERIFY(!model::saveDrawingFile(lost, *sample, &error));
    QVERIFY2(error.contains(lost), qPrintable(error));

    QFile big(dir.filePath(QStringLiteral("big.curvix")));
    QVERIFY(big.open(QIODevice::WriteOnly));
    big.write(QByteArray(10 * 1024 * 1024, ' ').prepend("{\"format\": \"curvix-drawing\", \"version\": 1}"));
    big.close();
    QVERIFY(!model::openDrawingFile(big.fileName(), &error));
    QVERIFY2(error.contains(QLatin1String("big.curvix")) && error.contains(QLatin1String("too large")),
             qPrintable(error));
}

void TestDrawingFile::aParameterValueMovesItsCurves()
{
    // The slider's path: the curves that use the parameter, and their slopes, follow; the
    // others keep their compiled formula.
    FreshState state;
    state.parameters = {{QStringLiteral("a"), 1}};
    add(state, QStringLiteral("ax^2"));
    add(state, QStringLiteral("x+1"));
    state.graphs[0].slopeText = QStringLiteral("2*a*x");
    plot::sampleDrawing(state, {}, plot::Sampling::Serial);
    const auto before = state.graphs[0].points;
    const auto untouched = state.graphs[1].formula;
    model::setParameterValue(state, 0, 3);
    plot::sampleDrawing(state, {}, plot::Sampling::Serial);
    for (std::size_t i = 0; i < before.size(); i += 500)
        QCOMPARE(state.graphs[0].points[i].y, 3 * before[i].y);
    QCOMPARE(state.graphs[0].slopeFormula->evaluate(1), 6.0);
    QCOMPARE(state.graphs[1].formula, untouched);
}

QTEST_MAIN(TestDrawingFile)
#include "test_drawing_file.moc"
