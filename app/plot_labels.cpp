#include "app/plot_labels.h"

#include "app/plot_label.h"
#include "eval/numtext.h"
#include "model/strings.h"
#include "output/capture.h"
#include "plot/formula_picture.h"

namespace curvix::app {

using model::LoadResString;

PlotLabels::PlotLabels(model::AppState& state, model::Prompter& prompter, QWidget* plot,
                       QObject* parent)
    : QObject(parent), m_state(state), m_prompter(prompter), m_plot(plot)
{
}

PlotLabel* PlotLabels::place(std::vector<QPointer<PlotLabel>>& list, QPointF at)
{
    const QPointF world = plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view).toWorld(at);
    return placeAtWorld(list, world.x(), world.y());
}

PlotLabel* PlotLabels::placeAtWorld(std::vector<QPointer<PlotLabel>>& list, double x, double y)
{
    auto* label = new PlotLabel(x, y, m_plot);
    label->setFont(m_font);
    label->move(plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view).toPixel(x, y).toPoint());
    connect(label, &PlotLabel::moved, this, [this, label](QPoint topLeft) {
        const QPointF w =
            plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view).toWorld(topLeft);
        label->setWorld(w.x(), w.y());
        m_state.documentChanged = true;
        emit changed();
    });
    // Reported once the label is gone from the lists (a guard is cleared after destroyed).
    connect(label, &QObject::destroyed, this, [this] {
        if (!m_clearing)
            QMetaObject::invokeMethod(this, &PlotLabels::changed, Qt::QueuedConnection);
    });
    list.emplace_back(label);
    m_state.documentChanged = true;
    return label;
}

QLabel* PlotLabels::addText(const QString& text, QPointF at)
{
    PlotLabel* label = place(m_texts, at);
    label->setText(text);
    label->adjustSize();
    label->show();
    emit changed();
    return label;
}

QLabel* PlotLabels::addFormula(const QString& formula, const QString& variableLabel, QPointF at)
{
    const QImage picture =
        plot::typesetFormula(formula, variableLabel, m_font, m_plot->devicePixelRatioF(),
                             m_state.parameters);
    if (picture.isNull())
        return nullptr;
    PlotLabel* label = place(m_formulas, at);
    label->setPixmap(QPixmap::fromImage(picture));
    label->setProperty("formula", formula);
    label->setProperty("variableLabel", variableLabel);
    label->adjustSize();
    label->show();
    emit changed();
    return label;
}

QLabel* PlotLabels::addPointLabel(int curve, QPointF at)
{
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view);
    const eval::PointD* nearest = nullptr;
    double best = 0;
    for (const eval::PointD& p : m_state.graphs[std::size_t(curve)].points) {
        const QPointF d = scale.toPixel(p.x, p.y) - at;
        const double squared = d.x() * d.x() + d.y() * d.y();
        if (!nearest || squared < best) {
            nearest = &p;
            best = squared;
        }
    }
    if (!nearest)
        return nullptr;
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 4)); };
    QLabel* label = addText(QStringLiteral("(%1%2 %3)")
                                .arg(text(nearest->x), m_state.coordinateSeparator, text(nearest->y)),
                            scale.toPixel(nearest->x, nearest->y));
    label->setProperty("curve", curve);
    return label;
}

std::optional<QString> PlotLabels::editLastFormula(const QString& functionText, const QString& label)
{
    PlotLabel* object = nullptr;
    for (const QPointer<PlotLabel>& candidate : m_formulas)
        if (candidate)
            object = candidate;
    const QString current = object ? object->property("formula").toString() : functionText;
    std::optional<QString> edited = m_prompter.inputText(LoadResString(2070), current);
    if (!edited || edited->isEmpty())
        return std::nullopt;
    const QImage picture = plot::typesetFormula(*edited, label, m_font, m_plot->devicePixelRatioF(),
                             m_state.parameters);
    if (picture.isNull()) {
        m_prompter.message(LoadResString(2071));
        return std::nullopt;
    }
    if (!object)
        return edited;
    object->setPixmap(QPixmap::fromImage(picture));
    object->setProperty("formula", *edited);
    object->adjustSize();
    m_state.documentChanged = true;
    emit changed();
    return std::nullopt;
}

void PlotLabels::placeAll(const plot::PlotScale& scale)
{
    for (const auto* list : {&m_texts, &m_formulas})
        for (const QPointer<PlotLabel>& label : *list)
            if (label)
                label->move(scale.toPixel(label->worldX(), label->worldY()).toPoint());
}

QFont PlotLabels::shownFont() const
{
    QFont shown = m_font.resolve(m_plot->font());
    // Every property as shown: a painter would fill those not marked set from its device's.
    shown.setResolveMask(QFont::AllPropertiesResolved);
    return shown;
}

void PlotLabels::burnInto(QImage& picture) const
{
    auto texts = [](const std::vector<QPointer<PlotLabel>>& labels) {
        std::vector<std::optional<output::OverlayText>> list;
        for (const QPointer<PlotLabel>& label : labels) {
            if (label)
                list.push_back(output::OverlayText{label->geometry(), label->text()});
            else
                list.emplace_back();
        }
        return list;
    };
    std::vector<std::optional<output::OverlayPicture>> pictures;
    for (const QPointer<PlotLabel>& object : m_formulas) {
        if (object)
            pictures.push_back(output::OverlayPicture{object->geometry(), object->pixmap().toImage()});
        else
            pictures.emplace_back();
    }
    output::burnOverlays(picture, pictures, texts(m_texts), {}, shownFont());
}

output::PictureLabels PlotLabels::pictureLabels() const
{
    output::PictureLabels labels;
    labels.font = m_font;
    for (const QPointer<PlotLabel>& label : m_texts)
        if (label)
            labels.texts.push_back({label->text(), QPointF(label->geometry().topLeft())});
    for (const QPointer<PlotLabel>& label : m_formulas)
        if (label)
            labels.formulas.push_back({label->property("formula").toString(),
                                       label->property("variableLabel").toString(),
                                       QPointF(label->geometry().topLeft())});
    return labels;
}

void PlotLabels::clear()
{
    m_clearing = true;
    for (auto* list : {&m_texts, &m_formulas}) {
        for (const QPointer<PlotLabel>& label : *list)
            delete label.data();
        list->clear();
    }
    m_clearing = false;
}

void PlotLabels::writeInto(model::Drawing& drawing) const
{
    for (const QPointer<PlotLabel>& label : m_texts) {
        if (!label)
            continue;
        const QVariant curve = label->property("curve");
        if (curve.isValid())
            drawing.pointLabels.push_back({curve.toInt(), label->text(), label->worldX(), label->worldY()});
        else
            drawing.textLabels.push_back({label->text(), label->worldX(), label->worldY()});
    }
    for (const QPointer<PlotLabel>& label : m_formulas)
        if (label)
            drawing.formulaPictures.push_back({label->property("formula").toString(),
                                               label->property("variableLabel").toString(),
                                               label->worldX(), label->worldY()});
}

void PlotLabels::showFrom(const model::Drawing& drawing)
{
    clear();
    const QSignalBlocker quiet(this); // one drawing shown is one change, not one a label
    auto addTextAt = [&](const QString& text, double x, double y) {
        PlotLabel* label = placeAtWorld(m_texts, x, y);
        label->setText(text);
        label->adjustSize();
        label->show();
        return label;
    };
    for (const model::TextLabel& text : drawing.textLabels)
        addTextAt(text.text, text.x, text.y);
    for (const model::PointLabel& point : drawing.pointLabels)
        addTextAt(point.text, point.x, point.y)->setProperty("curve", point.curve);
    for (const model::FormulaPicture& formula : drawing.formulaPictures) {
        const QImage picture =
            plot::typesetFormula(formula.formula, formula.label, m_font, m_plot->devicePixelRatioF(),
                             m_state.parameters);
        if (picture.isNull())
            continue;
        PlotLabel* label = placeAtWorld(m_formulas, formula.x, formula.y);
        label->setPixmap(QPixmap::fromImage(picture));
        label->setProperty("formula", formula.formula);
        label->setProperty("variableLabel", formula.label);
        label->adjustSize();
        label->show();
    }
}

} // namespace curvix::app
