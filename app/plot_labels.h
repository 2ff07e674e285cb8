#pragma once

#include "model/app_state.h"
#include "model/drawing.h"
#include "model/prompter.h"
#include "output/vector_picture.h"
#include "plot/coordinates.h"

#include <QFont>
#include <QObject>
#include <QPointer>

#include <vector>

class QLabel;
class QWidget;

namespace curvix::app {

class PlotLabel;

// The labels lying over the plot at world positions: texts (dropped from the label text
// box, or a point's coordinates after a double-click) and typeset formula pictures. Deleting one leaves
// its place in its list empty.
class PlotLabels : public QObject {
    Q_OBJECT
public:
    PlotLabels(model::AppState& state, model::Prompter& prompter, QWidget* plot, QObject* parent);

    void setFont(const QFont& font) { m_font = font; }
    // The font the text labels show: the one set, with what it leaves open (the size, after
    // a change of the plot's font size) taken from the plot's, as a child widget does.
    QFont shownFont() const;
    QLabel* addText(const QString& text, QPointF at);
    QLabel* addFormula(const QString& formula, const QString& label, QPointF at);
    // A label with the coordinates of the curve's sampled point nearest to the pixel.
    QLabel* addPointLabel(int curve, QPointF at);
    // Edits the formula of the last formula picture; with none, returns the edited text
    // for the function box. The label box's text names the variable.
    std::optional<QString> editLastFormula(const QString& functionText, const QString& label);
    // Labels keep their world position: a zoom or a new range moves them with the plot.
    void placeAll(const plot::PlotScale& scale);
    void burnInto(QImage& picture) const;
    // The labels as data for media that keep text: texts and formulas at their corners.
    output::PictureLabels pictureLabels() const;
    void clear();
    // The labels as a drawing keeps them (texts, point labels, formula pictures), and the
    // labels of a drawing put in place of these.
    void writeInto(model::Drawing& drawing) const;
    void showFrom(const model::Drawing& drawing);

signals:
    // A label was added, moved, edited or deleted.
    void changed();

private:
    PlotLabel* place(std::vector<QPointer<PlotLabel>>& list, QPointF at);
    PlotLabel* placeAtWorld(std::vector<QPointer<PlotLabel>>& list, double x, double y);

    model::AppState& m_state;
    model::Prompter& m_prompter;
    QWidget* m_plot;
    QFont m_font;
    std::vector<QPointer<PlotLabel>> m_texts;
    std::vector<QPointer<PlotLabel>> m_formulas;
    bool m_clearing = false;
};

} // namespace curvix::app
