#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>
#include <optional>
#include <utility>

class QPrinter;

namespace curvix::model {

// Every message box and dialog of the program goes through this port, so that the core
// reports in plain text and tests answer dialogs from a script.
class Prompter {
public:
    enum class Button { Ok, Yes, No, Cancel, Retry };
    enum class Buttons { Ok, YesNo, YesNoCancel, OkCancel, RetryCancel };

    virtual ~Prompter() = default;

    // A plain message box: no title of its own, OK only.
    virtual void message(const QString& text) = 0;
    virtual Button ask(const QString& text, Buttons buttons) = 0;
    // A colour as 0x00BBGGRR; nothing when the user cancelled.
    virtual std::optional<quint32> chooseColor(const QString& title, quint32 initial) = 0;
    virtual std::optional<QString> inputText(const QString& prompt, const QString& initial) = 0;
    // The chosen file name, or "" when the user cancelled. selectedFilter, when given, is
    // the file type offered first and the one chosen; the name may then still get that
    // type's ending, so the dialog leaves the question about replacing a file to the caller.
    virtual QString saveFileName(const QString& title, const QString& folder, const QString& filter,
                                 QString* selectedFilter = nullptr) = 0;
    virtual QString openFileName(const QString& title, const QString& folder,
                                 const QString& filter) = 0;
    // The printer dialog for the given printer; false when the user cancelled.
    virtual bool printerSetup(QPrinter& printer) = 0;
};

// A prompter for work without a window: messages and questions go to report (a question is
// answered Cancel), and every dialog is cancelled.
class DialogFreePrompter : public Prompter {
public:
    explicit DialogFreePrompter(std::function<void(const QString&)> report = {})
        : m_report(std::move(report))
    {
    }

    void message(const QString& text) override
    {
        if (m_report)
            m_report(text);
    }
    Button ask(const QString& text, Buttons) override
    {
        message(text);
        return Button::Cancel;
    }
    std::optional<quint32> chooseColor(const QString&, quint32) override { return {}; }
    std::optional<QString> inputText(const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&, QString*) override { return {}; }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    bool printerSetup(QPrinter&) override { return false; }

private:
    std::function<void(const QString&)> m_report;
};

} // namespace curvix::model
