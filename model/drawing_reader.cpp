#include "model/drawing_file.h"

#include "model/drawing_keys.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

#include <cmath>
#include <limits>

namespace curvix::model {

namespace {
// Messages a user reads; the command line shows them untranslated.
struct DrawingText {
    Q_DECLARE_TR_FUNCTIONS(DrawingText)
};
} // namespace

namespace {

using namespace drawing_keys;

// ---- reading ----

// A refusal found deep in the reader; readDrawing turns it into the message.
struct Refusal {
    QString message;
};

[[noreturn]] void refuse(const QString& message)
{
    throw Refusal{message};
}

[[noreturn]] void badField(const QString& path, const QString& what)
{
    refuse(DrawingText::tr("field '%1' %2").arg(path, what));
}

QString join(const QString& path, const char* key)
{
    return path.isEmpty() ? QString::fromLatin1(key) : path + QLatin1Char('.') + Key(key);
}

QString element(const QString& path, qsizetype i)
{
    return QStringLiteral("%1[%2]").arg(path).arg(i);
}

double toNumber(const QJsonValue& v, const QString& path, double limit = kMaxCoordinate)
{
    if (!v.isDouble())
        badField(path, DrawingText::tr("is not a number"));
    const double d = v.toDouble();
    if (!std::isfinite(d) || std::abs(d) > limit)
        badField(path, DrawingText::tr("is out of range (at most %1 either way)").arg(limit));
    return d;
}

qint64 toInteger(const QJsonValue& v, const QString& path, qint64 low, qint64 high)
{
    const double d = toNumber(v, path, std::numeric_limits<double>::max());
    if (d != std::floor(d) || d < double(low) || d > double(high))
        badField(path, DrawingText::tr("is not a whole number from %1 to %2").arg(low).arg(high));
    return qint64(d);
}

bool toFlag(const QJsonValue& v, const QString& path)
{
    if (!v.isBool())
        badField(path, DrawingText::tr("is not true or false"));
    return v.toBool();
}

QString toText(const QJsonValue& v, const QString& path)
{
    if (!v.isString())
        badField(path, DrawingText::tr("is not a text"));
    QString text = v.toString();
    if (text.size() > kMaxTextLength)
        badField(path, DrawingText::tr("is too long (at most %1 characters)").arg(kMaxTextLength));
    return text;
}

quint32 toColor(const QJsonValue& v, const QString& path)
{
    return quint32(toInteger(v, path, 0, 0xFFFFFFFFLL));
}

QJsonObject toObject(const QJsonValue& v, const QString& path)
{
    if (!v.isObject())
        badField(path, DrawingText::tr("is not an object"));
    return v.toObject();
}

QJsonArray toList(const QJsonValue& v, const QString& path, qsizetype most)
{
    if (!v.isArray())
        badField(path, DrawingText::tr("is not a list"));
    QJsonArray list = v.toArray();
    if (list.size() > most)
        badField(path, DrawingText::tr("has too many entries (%1; at most %2)")
                           .arg(list.size())
                           .arg(most));
    return list;
}

// One object of the file and where it lies, for the messages.
struct Fields {
    QJsonObject object;
    QString path;

    QJsonValue required(const char* key) const
    {
        QJsonValue v = object.value(Key(key));
        if (v.isUndefined())
            badField(join(path, key), DrawingText::tr("is missing"));
        return v;
    }
    // Reads key with read(value, path) when it is there; keeps the default when not.
    template <class T, class Read>
    void optional(const char* key, T& target, Read read) const
    {
        const QJsonValue v = object.value(Key(key));
        if (!v.isUndefined())
            target = read(v, join(path, key));
    }
    void number(const char* key, double& target) const
    {
        optional(key, target, [](const QJsonValue& v, const QString& p) { return toNumber(v, p); });
    }
    void flag(const char* key, bool& target) const { optional(key, target, toFlag); }
    void text(const char* key, QString& target) const { optional(key, target, toText); }
    void color(const char* key, quint32& target) const { optional(key, target, toColor); }
    Fields sub(const char* key) const
    {
        Fields inner{{}, join(path, key)};
        if (object.contains(Key(key)))
            inner.object = toObject(object.value(Key(key)), inner.path);
        return inner;
    }
};

// Calls read(fields of the element) for each object of an optional list.
template <class Read>
void eachObject(const Fields& f, const char* key, qsizetype most, Read read)
{
    const QJsonValue v = f.object.value(Key(key));
    if (v.isUndefined())
        return;
    const QString path = join(f.path, key);
    const QJsonArray list = toList(v, path, most);
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QString at = element(path, i);
        read(Fields{toObject(list[i], at), at});
    }
}

std::vector<double> numbers(const Fields& f, const char* key)
{
    std::vector<double> out;
    const QJsonValue v = f.object.value(Key(key));
    if (v.isUndefined())
        return out;
    const QString path = join(f.path, key);
    const QJsonArray list = toList(v, path, kMaxListEntries);
    for (qsizetype i = 0; i < list.size(); ++i)
        out.push_back(toNumber(list[i], element(path, i)));
    return out;
}

// A view the range boxes would accept, so that every redraw of it is sound.
ViewWindow toView(const Fields& f)
{
    ViewWindow view;
    for (std::size_t i = 0; i < kViewKeys.size(); ++i)
        view.*kViewFields[i] = toNumber(f.required(kViewKeys[i]), join(f.path, kViewKeys[i]));
    for (const auto& [min, max, step, ticks] :
         {std::array{view.XMin, view.XMax, view.XStep, view.XTicks},
          std::array{view.YMin, view.YMax, view.YStep, view.YTicks}}) {
        if (!(min < max) || !std::isfinite(max - min) ||
            std::max(std::abs(min), std::abs(max)) > 1e12 * (max - min))
            badField(f.path, DrawingText::tr("is not a usable range: each minimum must lie "
                                                                        "below its maximum"));
        if (step < 0 || (ticks > 0 && !(step > 0)))
            badField(f.path, DrawingText::tr("is not a usable range: a step is negative or 0"));
    }
    return view;
}

DrawingFunction toFunction(const Fields& f)
{
    DrawingFunction fn;
    fn.text = toText(f.required("text"), join(f.path, "text"));
    f.text("variable", fn.variable);
    f.color("color", fn.color);
    const auto link = [](const QJsonValue& v, const QString& p) {
        return qint32(toInteger(v, p, -1, std::numeric_limits<qint16>::max()));
    };
    f.optional("derivative", fn.derivativeIndex, link);
    f.optional("primitive", fn.primitiveIndex, link);
    fn.tangentXs = numbers(f, "tangents");
    return fn;
}

void readLists(const Fields& root, Drawing& d)
{
    d.verticalLines = numbers(root, "verticalLines");
    d.horizontalLines = numbers(root, "horizontalLines");
    eachObject(root, "fills", kMaxListEntries, [&](const Fields& f) {
        FillPoint p;
        p.x = toNumber(f.required("x"), join(f.path, "x"));
        p.y = toNumber(f.required("y"), join(f.path, "y"));
        f.color("color", p.color);
        d.fills.push_back(p);
    });
    const auto place = [](const Fields& f, double& x, double& y) {
        x = toNumber(f.required("x"), join(f.path, "x"));
        y = toNumber(f.required("y"), join(f.path, "y"));
    };
    eachObject(root, "textLabels", kMaxListEntries, [&](const Fields& f) {
        TextLabel l;
        l.text = toText(f.required("text"), join(f.path, "text"));
        place(f, l.x, l.y);
        d.textLabels.push_back(l);
    });
    eachObject(root, "pointLabels", kMaxListEntries, [&](const Fields& f) {
        PointLabel l;
        l.curve =
            qint32(toInteger(f.required("curve"), join(f.path, "curve"), 0, kMaxFunctions - 1));
        l.text = toText(f.required("text"), join(f.path, "text"));
        place(f, l.x, l.y);
        d.pointLabels.push_back(l);
    });
    eachObject(root, "formulaPictures", kMaxListEntries, [&](const Fields& f) {
        FormulaPicture l;
        l.formula = toText(f.required("formula"), join(f.path, "formula"));
        f.text("label", l.label);
        place(f, l.x, l.y);
        d.formulaPictures.push_back(l);
    });
}

// Parameters a formula can read: one letter each, declared once, with a usable range.
void readParameters(const Fields& root, Drawing& d)
{
    const QString variable = d.variable.isEmpty() ? QStringLiteral("x") : d.variable;
    eachObject(root, "parameters", kMaxParameters, [&](const Fields& f) {
        eval::Parameter p;
        p.name = toText(f.required("name"), join(f.path, "name"));
        if (!eval::isParameterName(p.name, variable))
            badField(join(f.path, "name"),
                     DrawingText::tr("is not a small letter other than e and the variable"));
        if (eval::parameterIndex(d.parameters, p.name) >= 0)
            badField(join(f.path, "name"), DrawingText::tr("names a parameter declared before"));
        p.value = toNumber(f.required("value"), join(f.path, "value"));
        p.minimum = toNumber(f.required("min"), join(f.path, "min"));
        p.maximum = toNumber(f.required("max"), join(f.path, "max"));
        p.step = toNumber(f.required("step"), join(f.path, "step"));
        if (!(p.minimum < p.maximum))
            badField(join(f.path, "min"), DrawingText::tr("is not below max"));
        if (!(p.step > 0))
            badField(join(f.path, "step"), DrawingText::tr("is not greater than 0"));
        d.parameters.push_back(p);
    });
}

void readAreas(const Fields& root, Drawing& d)
{
    const qint64 lastCurve = qint64(d.functions.size()) - 1;
    eachObject(root, "areas", kMaxListEntries, [&](const Fields& f) {
        AreaRegion area;
        const QString curve = join(f.path, "curve");
        if (lastCurve < 0)
            badField(curve, DrawingText::tr("names a curve, but the drawing has none"));
        area.curve = qint32(toInteger(f.required("curve"), curve, 0, lastCurve));
        area.a = toNumber(f.required("a"), join(f.path, "a"));
        area.b = toNumber(f.required("b"), join(f.path, "b"));
        d.areas.push_back(area);
    });
}

void readLook(const Fields& root, Drawing& d)
{
    root.optional("angleUnit", d.angleUnit, [](const QJsonValue& v, const QString& p) {
        const QString name = toText(v, p);
        for (std::size_t i = 0; i < kAngleNames.size(); ++i)
            if (name == QLatin1String(kAngleNames[i]))
                return AngleUnit(int(i) + 1);
        badField(p, DrawingText::tr("is not radians, degrees or gradians"));
    });
    const Fields display = root.sub("display");
    DrawingDisplay& s = d.display;
    display.flag("grid", s.grid);
    display.flag("axisArrows", s.axisArrows);
    display.flag("tickLabels", s.tickLabels);
    display.flag("exactTrig", s.exactTrig);
    display.flag("fractionForm", s.fractionForm);
    display.optional("fontSize", s.fontSize, [](const QJsonValue& v, const QString& p) {
        return int(toInteger(v, p, 0, 200));
    });
    const Fields colors = root.sub("colors");
    colors.color("grid", d.gridColor);
    colors.color("axis", d.axisColor);
    colors.color("function", d.functionColor);
    colors.color("fill", d.fillColor);
    colors.color("tangent", d.tangentColor);
    colors.flag("autoColors", d.autoColors);
    const Fields arrows = root.sub("arrowEnds");
    arrows.flag("xNeg", d.arrowEnds.xNeg);
    arrows.flag("xPos", d.arrowEnds.xPos);
    arrows.flag("yNeg", d.arrowEnds.yNeg);
    arrows.flag("yPos", d.arrowEnds.yPos);
    root.text("coordinateSeparator", d.coordinateSeparator);
}

void checkHeader(const QJsonObject& root)
{
    if (root.value(Key("format")).toString() != QLatin1String(kDrawingFormatName))
        refuse(DrawingText::tr("not a Curvix drawing"));
    const qint64 version =
        toInteger(Fields{root, {}}.required("version"), QStringLiteral("version"), 1, 1 << 30);
    if (version > kDrawingFormatVersion)
        refuse(DrawingText::tr("made by a newer Curvix (format version %1); "
                                                          "this one reads version %2")
                   .arg(version)
                   .arg(kDrawingFormatVersion));
}

Drawing toDrawing(const QJsonObject& object)
{
    checkHeader(object);
    const Fields root{object, {}};
    Drawing d;
    root.text("variable", d.variable);
    if (d.variable.size() > 1)
        badField(QStringLiteral("variable"), DrawingText::tr("is not a single letter"));
    const QJsonArray functions =
        toList(root.required("functions"), QStringLiteral("functions"), kMaxFunctions);
    for (qsizetype i = 0; i < functions.size(); ++i) {
        const QString at = element(QStringLiteral("functions"), i);
        d.functions.push_back(toFunction(Fields{toObject(functions[i], at), at}));
    }
    eachObject(root, "items", kMaxFunctions, [&](const Fields& f) {
        const qint64 indent =
            toInteger(f.required("indent"), join(f.path, "indent"), 0, kMaxFunctions);
        d.items.push_back({toText(f.required("text"), join(f.path, "text")), int(indent)});
    });
    const QString view = QStringLiteral("view");
    d.view = toView(Fields{toObject(root.required("view"), view), view});
    d.startView = d.view;
    if (object.contains(Key("startView")))
        d.startView = toView(root.sub("startView"));
    eachObject(root, "zoomHistory", kMaxZoomSteps,
               [&](const Fields& f) { d.zoomHistory.push_back(toView(f)); });
    readLook(root, d);
    readLists(root, d);
    readParameters(root, d);
    readAreas(root, d);
    return d;
}

} // namespace

std::optional<Drawing> readDrawing(const QByteArray& bytes, QString* error)
{
    try {
        if (bytes.size() > kMaxDrawingFileBytes)
            refuse(DrawingText::tr("the file is too large for a drawing (at most %1 bytes)")
                       .arg(kMaxDrawingFileBytes));
        QJsonParseError parse;
        const QJsonDocument document = QJsonDocument::fromJson(bytes, &parse);
        if (parse.error != QJsonParseError::NoError) {
            // Text that does not even start like JSON is some other kind of file.
            if (!bytes.trimmed().startsWith('{'))
                refuse(DrawingText::tr("not a Curvix drawing"));
            refuse(DrawingText::tr("the file is damaged: %1 at byte %2")
                       .arg(parse.errorString())
                       .arg(parse.offset));
        }
        if (!document.isObject())
            refuse(DrawingText::tr("not a Curvix drawing"));
        return toDrawing(document.object());
    } catch (const Refusal& refusal) {
        if (error)
            *error = refusal.message;
        return std::nullopt;
    }
}

} // namespace curvix::model
