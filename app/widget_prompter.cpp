#include "app/widget_prompter.h"

#include "plot/colors.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace curvix::app {

namespace {

// Message boxes carry no title of their own; the platform shows the program's name.
QString boxTitle()
{
    return QApplication::applicationDisplayName();
}

} // namespace

void WidgetPrompter::message(const QString& text)
{
    QMessageBox::information(m_parent, boxTitle(), text, QMessageBox::Ok);
}

model::Prompter::Button WidgetPrompter::ask(const QString& text, Buttons buttons)
{
    QMessageBox::StandardButtons qtButtons;
    switch (buttons) {
    case Buttons::Ok: qtButtons = QMessageBox::Ok; break;
    case Buttons::YesNo: qtButtons = QMessageBox::Yes | QMessageBox::No; break;
    case Buttons::YesNoCancel:
        qtButtons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        break;
    case Buttons::OkCancel: qtButtons = QMessageBox::Ok | QMessageBox::Cancel; break;
    case Buttons::RetryCancel: qtButtons = QMessageBox::Retry | QMessageBox::Cancel; break;
    }
    switch (QMessageBox::question(m_parent, boxTitle(), text, qtButtons)) {
    case QMessageBox::Ok: return Button::Ok;
    case QMessageBox::Yes: return Button::Yes;
    case QMessageBox::No: return Button::No;
    case QMessageBox::Retry: return Button::Retry;
    default: return Button::Cancel;
    }
}

std::optional<quint32> WidgetPrompter::chooseColor(const QString& title, quint32 initial)
{
    const QColor chosen = QColorDialog::getColor(plot::colorFromValue(initial), m_parent, title);
    if (!chosen.isValid())
        return std::nullopt;
    return plot::colorValueFromColor(chosen);
}

std::optional<QString> WidgetPrompter::inputText(const QString& prompt, const QString& initial)
{
    bool ok = false;
    const QString text =
        QInputDialog::getText(m_parent, boxTitle(), prompt, QLineEdit::Normal, initial, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

QString WidgetPrompter::saveFileName(const QString& title, const QString& folder,
                                     const QString& filter, QString* selectedFilter)
{
    const QFileDialog::Options options =
        selectedFilter ? QFileDialog::DontConfirmOverwrite : QFileDialog::Options();
    return QFileDialog::getSaveFileName(m_parent, title, folder, filter, selectedFilter, options);
}

QString WidgetPrompter::openFileName(const QString& title, const QString& folder,
                                     const QString& filter)
{
    return QFileDialog::getOpenFileName(m_parent, title, folder, filter);
}

bool WidgetPrompter::printerSetup(QPrinter& printer)
{
    QPrintDialog dialog(&printer, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace curvix::app
