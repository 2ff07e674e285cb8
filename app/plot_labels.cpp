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
    auto* label = new PlotLabel(world.x(), world.y(), m_plot);
    label->setFont(m_font);
    label->move(at.toPoint());
    connect(label, &PlotLabel::moved, this, [this, label](QPoint topLeft) {
        const QPointF w =
            plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view).toWorld(topLeft);
        label->setWorld(w.x(), w.y());
        m_state.documentChanged = true;
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
    return label;
}

QLabel* PlotLabels::addFormula(const QString& formula, const QString& variableLabel, QPointF at)
{
    const QImage picture =
        plot::typesetFormula(formula, variableLabel, m_font, m_plot->devicePixelRatioF());
    if (picture.isNull())
        return nullptr;
    PlotLabel* label = place(m_formulas, at);
    label->setPixmap(QPixmap::fromImage(picture));
    label->setProperty("formula", formula);
    label->adjustSize();
    label->show();
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
    return addText(QStringLiteral("(%1%2 %3)")
                       .arg(text(nearest->x), m_state.coordinateSeparator, text(nearest->y)),
                   scale.toPixel(nearest->x, nearest->y));
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
    const QImage picture = plot::typesetFormula(*edited, label, m_font, m_plot->devicePixelRatioF());
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
    return std::nullopt;
}

void PlotLabels::placeAll(const plot::PlotScale& scale)
{
    for (const auto* list : {&m_texts, &m_formulas})
        for (const QPointer<PlotLabel>& label : *list)
            if (label)
                label->move(scale.toPixel(label->worldX(), label->worldY()).toPoint());
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
    output::burnOverlays(picture, pictures, texts(m_texts), {}, m_font);
}

void PlotLabels::clear()
{
    for (auto* list : {&m_texts, &m_formulas}) {
        for (const QPointer<PlotLabel>& label : *list)
            delete label.data();
        list->clear();
    }
}

} // namespace curvix::app
