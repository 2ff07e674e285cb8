#pragma once

#include "eval/parameters.h"

// The layout of a typeset formula, shared by its raster and its vector painting
// (formula_picture.cpp); the typesetting itself is in formula_layout.cpp.

#include <QFont>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

#include <algorithm>
#include <optional>
#include <vector>

namespace curvix::plot::formula {

// What stands at one end of a box; decides how two factors may meet.
enum class Edge { Other, Digit, Fraction, Function };

// A laid-out piece of formula. Coordinates are logical pixels from the left end of the
// box's baseline, y downwards. Ascent and descent are what the layout reserves; ink is what
// the runs and shapes actually cover (italic overhangs, anti-aliased edges).
struct Box {
    struct Run {
        QPointF at;
        QFont font;
        QString text;
    };
    struct Shape {
        QPainterPath path;
        qreal pen = 0; // 0: the path is filled
    };

    qreal width = 0;
    qreal ascent = 0;
    qreal descent = 0;
    QRectF ink;
    Edge lead = Edge::Other;
    Edge trail = Edge::Other;
    bool blank = true;
    std::vector<Run> runs;
    std::vector<Shape> shapes;
    std::vector<QRectF> rules; // fraction bars and overlines, kept sharp when painted

    // Copies child in with the left end of its baseline at (x, y).
    void place(const Box& child, qreal x, qreal y)
    {
        for (const Run& run : child.runs)
            runs.push_back({run.at + QPointF(x, y), run.font, run.text});
        for (const Shape& shape : child.shapes)
            shapes.push_back({shape.path.translated(x, y), shape.pen});
        for (const QRectF& rule : child.rules)
            rules.push_back(rule.translated(x, y));
        ink |= child.ink.translated(x, y);
        width = std::max(width, x + child.width);
        ascent = std::max(ascent, child.ascent - y);
        descent = std::max(descent, child.descent + y);
        blank = blank && child.blank;
    }

    // Puts child after everything the box holds, on the same baseline.
    void append(const Box& child)
    {
        if (blank)
            lead = child.lead;
        place(child, width, 0);
        trail = child.trail;
    }

    void space(qreal w) { width += w; }

    void addShape(const QPainterPath& path, qreal pen)
    {
        shapes.push_back({path, pen});
        ink |= path.boundingRect().adjusted(-pen, -pen, pen, pen);
        blank = false;
    }

    void addRule(const QRectF& rule)
    {
        rules.push_back(rule);
        ink |= rule;
        blank = false;
    }
};

// A typeset formula with the rectangle its picture covers, the baseline's start at 0.
struct LaidOutFormula {
    Box box;
    QRectF area;
    QSize logical; // the area rounded up to whole pixels
};

// The formula of the typed text (and its label in front), laid out in the font; none when
// the text does not parse.
std::optional<LaidOutFormula> layOut(const QString& typed, const QString& label, const QFont& font,
                                     const eval::ParameterList& parameters = {});

} // namespace curvix::plot::formula
