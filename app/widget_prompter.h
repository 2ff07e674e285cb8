#pragma once

#include "model/prompter.h"

#include <QPointer>
#include <QWidget>

namespace curvix::app {

// The Prompter of the running program: Qt's standard dialogs, owned by the given window.
class WidgetPrompter final : public model::Prompter {
public:
    void setParentWidget(QWidget* parent) { m_parent = parent; }

    void message(const QString& text) override;
    Button ask(const QString& text, Buttons buttons) override;
    std::optional<quint32> chooseColor(const QString& title, quint32 initial) override;
    std::optional<QString> inputText(const QString& prompt, const QString& initial) override;
    QString saveFileName(const QString& title, const QString& folder, const QString& filter,
                         QString* selectedFilter) override;
    QString openFileName(const QString& title, const QString& folder, const QString& filter) override;
    bool printerSetup(QPrinter& printer) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace curvix::app
