#pragma once

#include "output/export_picture.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;

namespace curvix::app {

// The choices of File › Export: the picture's size in pixels, or in centimetres at a
// resolution; a transparent background (PNG and SVG); a factor on the line widths. The
// choices last accepted are remembered in the settings store and offered next time.
class ExportDialog : public QDialog {
    Q_OBJECT
public:
    explicit ExportDialog(QWidget* parent = nullptr);

    output::ExportOptions options() const;
    void setOptions(const output::ExportOptions& options);

    // The choices last accepted, or the defaults (800 × 600 pixels, 300 dpi).
    static output::ExportOptions remembered();
    static void remember(const output::ExportOptions& options);

private:
    void unitChanged();
    void showPixels();

    QComboBox* m_unit = nullptr;
    QDoubleSpinBox* m_width = nullptr;
    QDoubleSpinBox* m_height = nullptr;
    QSpinBox* m_dpi = nullptr;
    QLabel* m_pixels = nullptr;
    QCheckBox* m_transparent = nullptr;
    QDoubleSpinBox* m_lineWidth = nullptr;
    output::SizeUnit m_shownUnit = output::SizeUnit::Pixels;
};

} // namespace curvix::app
