#include "app/tool_icons.h"

#include <QAbstractButton>
#include <QEvent>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace curvix::app {

namespace {

constexpr int kSide = 48;

void magnifier(QPainter& p, bool plus)
{
    p.drawEllipse(QPointF(20, 20), 13, 13);
    p.drawLine(QPointF(30, 30), QPointF(42, 42));
    p.drawLine(QPointF(13, 20), QPointF(27, 20));
    if (plus)
        p.drawLine(QPointF(20, 13), QPointF(20, 27));
}

// f': a hooked stem with a cross bar, and the prime, drawn as strokes so that no font is
// needed.
void derivativeSign(QPainter& p)
{
    QPainterPath f;
    f.moveTo(30, 9);
    f.cubicTo(26, 5, 20, 6, 19, 13);
    f.lineTo(15, 36);
    f.cubicTo(14, 42, 9, 43, 6, 40);
    p.drawPath(f);
    p.drawLine(QPointF(11, 20), QPointF(26, 20));
    p.drawLine(QPointF(37, 8), QPointF(33, 19));
}

// The integral sign: a long S with round ends.
void integralSign(QPainter& p)
{
    QPainterPath s;
    s.moveTo(33, 9);
    s.cubicTo(31, 3, 24, 3, 23, 12);
    s.lineTo(21, 36);
    s.cubicTo(20, 45, 13, 45, 11, 39);
    p.drawPath(s);
    p.setBrush(p.pen().color());
    p.drawEllipse(QPointF(33, 9), 2, 2);
    p.drawEllipse(QPointF(11, 39), 2, 2);
}

class PaintedIconEngine : public QIconEngine {
public:
    PaintedIconEngine(int side, std::function<void(QPainter&)> paint)
        : m_side(side), m_paint(std::move(paint))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(double(rect.width()) / m_side, double(rect.height()) / m_side);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        m_paint(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    // Window managers take an icon's pixmaps at the sizes it lists.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
            sizes << QSize(side, side);
        return sizes;
    }

    QIconEngine* clone() const override { return new PaintedIconEngine(m_side, m_paint); }

private:
    int m_side;
    std::function<void(QPainter&)> m_paint;
};

// Repaints its button's icon when the colours around the button change.
class IconInk : public QObject {
public:
    IconInk(QAbstractButton* button, std::function<QIcon(const QColor&)> paint)
        : QObject(button), m_button(button), m_paint(std::move(paint))
    {
        button->installEventFilter(this);
        repaint();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // An application palette or theme change is followed by a PaletteChange once the
        // button's palette is resolved; repainting on each is cheap and misses none.
        const QEvent::Type type = event->type();
        if (watched == m_button &&
            (type == QEvent::PaletteChange || type == QEvent::ApplicationPaletteChange ||
             type == QEvent::ThemeChange))
            repaint();
        return false;
    }

private:
    void repaint() { m_button->setIcon(m_paint(m_button->palette().color(QPalette::ButtonText))); }

    QAbstractButton* m_button;
    std::function<QIcon(const QColor&)> m_paint;
};

void paintToolIcon(QPainter& p, int index, const QColor& ink)
{
    QPen pen(ink, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    QPainterPath parabola;
    parabola.moveTo(6, 8);
    parabola.quadTo(24, 64, 42, 8);

    switch (index) {
    case 0: // print
        p.drawRect(QRectF(14, 6, 20, 12));
        p.drawRoundedRect(QRectF(6, 18, 36, 16), 3, 3);
        p.drawRect(QRectF(14, 30, 20, 12));
        break;
    case 1: magnifier(p, true); break;
    case 2: magnifier(p, false); break;
    case 3: // trace: a point walking along a curve
        p.drawPath(parabola);
        p.setBrush(ink);
        p.drawEllipse(QPointF(33, 26), 5, 5);
        break;
    case 4: // tangents
        p.drawPath(parabola);
        p.drawLine(QPointF(4, 42), QPointF(44, 22));
        break;
    case 5: derivativeSign(p); break;
    case 6: integralSign(p); break;
    case 7: // delete
        p.drawLine(QPointF(12, 12), QPointF(36, 36));
        p.drawLine(QPointF(36, 12), QPointF(12, 36));
        break;
    case 8: { // save: a disk with its shutter and label
        QPainterPath disk;
        disk.moveTo(8, 8);
        disk.lineTo(34, 8);
        disk.lineTo(40, 14);
        disk.lineTo(40, 40);
        disk.lineTo(8, 40);
        disk.closeSubpath();
        p.drawPath(disk);
        p.drawRect(QRectF(15, 8, 16, 10));
        p.drawRect(QRectF(14, 26, 20, 14));
        break;
    }
    case 9: { // new: a page with a folded corner
        QPainterPath page;
        page.moveTo(10, 6);
        page.lineTo(28, 6);
        page.lineTo(38, 16);
        page.lineTo(38, 42);
        page.lineTo(10, 42);
        page.closeSubpath();
        p.drawPath(page);
        p.drawPolyline(QPolygonF({QPointF(28, 6), QPointF(28, 16), QPointF(38, 16)}));
        break;
    }
    default: { // change colour: three paint spots
        p.setPen(Qt::NoPen);
        const QColor spots[3] = {QColor(220, 40, 40), QColor(40, 160, 60), QColor(40, 80, 220)};
        const QPointF centres[3] = {QPointF(16, 18), QPointF(32, 18), QPointF(24, 32)};
        for (int i = 0; i < 3; ++i) {
            p.setBrush(spots[i]);
            p.drawEllipse(centres[i], 10, 10);
        }
        break;
    }
    }
}

} // namespace

void setThemedIcon(QAbstractButton* button, std::function<QIcon(const QColor& ink)> paint)
{
    new IconInk(button, std::move(paint));
}

QIcon paintedIcon(int side, std::function<void(QPainter&)> paint)
{
    return QIcon(new PaintedIconEngine(side, std::move(paint)));
}

QIcon toolIcon(int index, const QColor& ink)
{
    return paintedIcon(kSide, [index, ink](QPainter& p) { paintToolIcon(p, index, ink); });
}

} // namespace curvix::app
