#pragma once

#include "model/prompter.h"

#include <QStringList>
#ifdef QT_PRINTSUPPORT_LIB
#include <QPrinter>
#endif

#include <deque>

// A Prompter for tests: records every text it is shown and answers from queues. A
// dialog it has no answer for is recorded as unexpected and cancelled.
class ScriptedPrompter : public curvix::model::Prompter {
public:
    QStringList messages;
    QStringList questions;
    QStringList unexpected;
    std::deque<Button> answers;
    std::deque<std::optional<quint32>> colors;
    std::deque<QString> inputs; // a null QString answers Cancel
    std::deque<QString> fileNames;
    QStringList saveDialogs; // "title|folder|filter" of each save dialog shown
    QStringList offeredTypes; // the type each save dialog offered first
    std::deque<QString> chosenTypes; // the type chosen in each save dialog, while any are left
    // The printer dialog prints into this PDF file; an empty name cancels it.
    QString printToPdf;
    int printerDialogs = 0;

    void message(const QString& text) override { messages << text; }

    Button ask(const QString& text, Buttons) override
    {
        questions << text;
        return take(answers, text, Button::Cancel);
    }

    std::optional<quint32> chooseColor(const QString& title, quint32) override
    {
        return take(colors, title, std::optional<quint32>());
    }

    bool printerSetup([[maybe_unused]] QPrinter& printer) override
    {
        ++printerDialogs;
#ifdef QT_PRINTSUPPORT_LIB
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(printToPdf);
#endif
        return !printToPdf.isEmpty();
    }

    std::optional<QString> inputText(const QString& prompt, const QString&) override
    {
        const QString text = take(inputs, prompt, QString());
        return text.isNull() ? std::nullopt : std::optional<QString>(text);
    }

    // Without a chosen type left, the type stays the one offered first, as when the user
    // keeps it.
    QString saveFileName(const QString& title, const QString& folder, const QString& filter,
                         QString* selectedFilter) override
    {
        saveDialogs << title + QLatin1Char('|') + folder + QLatin1Char('|') + filter;
        if (selectedFilter) {
            offeredTypes << *selectedFilter;
            if (!chosenTypes.empty()) {
                *selectedFilter = chosenTypes.front();
                chosenTypes.pop_front();
            }
        }
        return take(fileNames, title, QString());
    }

    QString openFileName(const QString& title, const QString&, const QString&) override
    {
        return take(fileNames, title, QString());
    }

private:
    template <typename T>
    T take(std::deque<T>& queue, const QString& dialog, T cancel)
    {
        if (queue.empty()) {
            unexpected << dialog;
            return cancel;
        }
        T answer = queue.front();
        queue.pop_front();
        return answer;
    }
};
