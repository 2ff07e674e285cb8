#include "model/drawing_file.h"

#include "model/drawing_keys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace curvix::model {

namespace {
// Messages a user reads; the command line shows them untranslated.
struct DrawingText {
    Q_DECLARE_TR_FUNCTIONS(DrawingText)
};
} // namespace

namespace {

using namespace drawing_keys;

// -0 and 0 are the same place; the file writes both as 0.
double plain(double v)
{
    return v == 0 ? 0.0 : v;
}

QJsonObject viewObject(const ViewWindow& view)
{
    QJsonObject o;
    for (std::size_t i = 0; i < kViewKeys.size(); ++i)
        o.insert(Key(kViewKeys[i]), plain(view.*kViewFields[i]));
    return o;
}

QJsonArray numberList(const std::vector<double>& values)
{
    QJsonArray a;
    for (double v : values)
        a.append(plain(v));
    return a;
}

QJsonObject at(QJsonObject o, double x, double y)
{
    o.insert(Key("x"), plain(x));
    o.insert(Key("y"), plain(y));
    return o;
}

QJsonArray functionList(const Drawing& d)
{
    QJsonArray list;
    for (const DrawingFunction& f : d.functions) {
        list.append(QJsonObject{{Key("text"), f.text},
                                {Key("variable"), f.variable},
                                {Key("color"), qint64(f.color)},
                                {Key("derivative"), f.derivativeIndex},
                                {Key("primitive"), f.primitiveIndex},
                                {Key("tangents"), numberList(f.tangentXs)}});
    }
    return list;
}

QJsonArray labelLists(const Drawing& d, QJsonArray* points, QJsonArray* formulas)
{
    QJsonArray texts;
    for (const TextLabel& l : d.textLabels)
        texts.append(at({{Key("text"), l.text}}, l.x, l.y));
    for (const PointLabel& l : d.pointLabels)
        points->append(at({{Key("curve"), l.curve}, {Key("text"), l.text}}, l.x, l.y));
    for (const FormulaPicture& l : d.formulaPictures)
        formulas->append(at({{Key("formula"), l.formula}, {Key("label"), l.label}}, l.x, l.y));
    return texts;
}


} // namespace

QByteArray writeDrawing(const Drawing& d)
{
    QJsonObject root;
    root.insert(Key("format"), Key(kDrawingFormatName));
    root.insert(Key("version"), kDrawingFormatVersion);
    root.insert(Key("variable"), d.variable);
    root.insert(Key("functions"), functionList(d));
    QJsonArray items;
    for (const FunctionItem& item : d.items)
        items.append(QJsonObject{{Key("text"), item.text}, {Key("indent"), item.indent}});
    root.insert(Key("items"), items);

    root.insert(Key("view"), viewObject(d.view));
    root.insert(Key("startView"), viewObject(d.startView));
    QJsonArray zooms;
    for (const ViewWindow& v : d.zoomHistory)
        zooms.append(viewObject(v));
    root.insert(Key("zoomHistory"), zooms);
    root.insert(Key("angleUnit"), Key(kAngleNames[std::size_t(int(d.angleUnit) - 1)]));

    const DrawingDisplay& s = d.display;
    root.insert(Key("display"), QJsonObject{{Key("grid"), s.grid},
                                            {Key("axisArrows"), s.axisArrows},
                                            {Key("tickLabels"), s.tickLabels},
                                            {Key("exactTrig"), s.exactTrig},
                                            {Key("fractionForm"), s.fractionForm},
                                            {Key("fontSize"), s.fontSize}});
    root.insert(Key("colors"), QJsonObject{{Key("grid"), qint64(d.gridColor)},
                                           {Key("axis"), qint64(d.axisColor)},
                                           {Key("function"), qint64(d.functionColor)},
                                           {Key("fill"), qint64(d.fillColor)},
                                           {Key("tangent"), qint64(d.tangentColor)},
                                           {Key("autoColors"), d.autoColors}});
    const AxisArrowSwitches& a = d.arrowEnds;
    root.insert(Key("arrowEnds"), QJsonObject{{Key("xNeg"), a.xNeg},
                                              {Key("xPos"), a.xPos},
                                              {Key("yNeg"), a.yNeg},
                                              {Key("yPos"), a.yPos}});
    root.insert(Key("coordinateSeparator"), d.coordinateSeparator);

    root.insert(Key("verticalLines"), numberList(d.verticalLines));
    root.insert(Key("horizontalLines"), numberList(d.horizontalLines));
    QJsonArray fills;
    for (const FillPoint& f : d.fills)
        fills.append(at({{Key("color"), qint64(f.color)}}, f.x, f.y));
    root.insert(Key("fills"), fills);
    QJsonArray parameters;
    for (const eval::Parameter& p : d.parameters)
        parameters.append(QJsonObject{{Key("name"), p.name},
                                      {Key("value"), plain(p.value)},
                                      {Key("min"), plain(p.minimum)},
                                      {Key("max"), plain(p.maximum)},
                                      {Key("step"), p.step}});
    root.insert(Key("parameters"), parameters);
    QJsonArray areas;
    for (const AreaRegion& area : d.areas)
        areas.append(QJsonObject{{Key("curve"), area.curve},
                                 {Key("a"), plain(area.a)},
                                 {Key("b"), plain(area.b)}});
    root.insert(Key("areas"), areas);

    QJsonArray points, formulas;
    root.insert(Key("textLabels"), labelLists(d, &points, &formulas));
    root.insert(Key("pointLabels"), points);
    root.insert(Key("formulaPictures"), formulas);
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

bool saveDrawingFile(const QString& path, const Drawing& drawing, QString* error)
{
    QSaveFile file(path);
    const QByteArray bytes = writeDrawing(drawing);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    if (error) {
        *error = DrawingText::tr("Could not save the drawing %1: %2")
                     .arg(QDir::toNativeSeparators(path), file.errorString());
    }
    return false;
}

std::optional<Drawing> openDrawingFile(const QString& path, QString* error)
{
    const QString name = QDir::toNativeSeparators(path);
    auto fail = [&](const QString& why) -> std::optional<Drawing> {
        if (error)
            *error = DrawingText::tr("Could not open the drawing %1: %2").arg(name, why);
        return std::nullopt;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(file.errorString());
    // A size of 0 is also what a pipe or a device reports; the read below is capped anyway.
    if (file.size() > kMaxDrawingFileBytes)
        return fail(QStringLiteral("the file is too large for a drawing (%1 bytes; at most %2)")
                        .arg(file.size())
                        .arg(kMaxDrawingFileBytes));
    const QByteArray bytes = file.read(kMaxDrawingFileBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return fail(file.errorString());
    if (bytes.size() > kMaxDrawingFileBytes)
        return fail(QStringLiteral("the file is too large for a drawing (at most %1 bytes)")
                        .arg(kMaxDrawingFileBytes));
    QString why;
    std::optional<Drawing> drawing = readDrawing(bytes, &why);
    if (!drawing)
        return fail(why);
    return drawing;
}

} // namespace curvix::model
