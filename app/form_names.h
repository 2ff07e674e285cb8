#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QString>
#include <QWidget>

namespace curvix::app {

// The form names of the main window's controls. They live on only as objectName, by which
// tests and accessibility tools find a control; the code names each control by what it is.
// A control of a row or pad adds "_" and its index (cmdtoken_16, Text4_0).
namespace formName {
inline constexpr char mainWindow[] = "frmgraph";
inline constexpr char labelEdit[] = "Text5";
inline constexpr char functionBox[] = "imgcombfunc";
inline constexpr char drawButton[] = "Command1_0";
inline constexpr char labelText[] = "Text2";
inline constexpr char formulaPreview[] = "OLE1";
inline constexpr char keypadKey[] = "cmdtoken";
inline constexpr char xRangeRow[] = "Text4";
inline constexpr char yRangeRow[] = "Text6";
inline constexpr char fractionInput[] = "fracinput";
inline constexpr char angleOption[] = "Option1";
inline constexpr char exactTrigBox[] = "Check1";
inline constexpr char gridBox[] = "Check2";
inline constexpr char arrowsBox[] = "Check3";
inline constexpr char tickLabelsBox[] = "Check4";
inline constexpr char numberFormMenu[] = "mnupop2";
inline constexpr char decimalForm[] = "mnupop21";
inline constexpr char fractionForm[] = "mnupop22";
inline constexpr char plotArea[] = "Picture1";
inline constexpr char grip[] = "lblGrip";
inline constexpr char statusPanel[] = "StatusBar1"; // numbered from 1
inline constexpr char demoButton[] = "Command3";
inline constexpr char toolButton[] = "Command5";
} // namespace formName

inline QString formNameAt(const char* name, int index)
{
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

template <typename W>
W* named(W* widget, const QString& name)
{
    widget->setObjectName(name);
    return widget;
}

// The name a screen reader says, and the tooltip when there is one.
inline void describe(QWidget* widget, const QString& name, const QString& tip = QString())
{
    widget->setAccessibleName(name);
    // The edit of an editable box is what holds the focus: a screen reader reads its name.
    if (auto* box = qobject_cast<QComboBox*>(widget); box && box->lineEdit())
        box->lineEdit()->setAccessibleName(name);
    if (!tip.isEmpty())
        widget->setToolTip(tip);
}

} // namespace curvix::app
