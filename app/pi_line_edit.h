#pragma once

#include <QLineEdit>

#include <functional>

namespace curvix::app {

// A number box in which "p" stands for pi. The stored text keeps "p"; the box shows "π",
// and typing either gives the same. An edit that the acceptance rule refuses is undone,
// so the box always holds the last accepted text.
class PiLineEdit : public QLineEdit {
    Q_OBJECT
public:
    using Rule = std::function<bool(const QString& stored)>;

    explicit PiLineEdit(QWidget* parent = nullptr);

    void setRule(Rule rule) { m_rule = std::move(rule); }
    QString storedText() const;
    // Replaces the text, shown with π; hides QLineEdit::setText on purpose so that code
    // filling rows of boxes stores "p" texts through either name.
    void setText(const QString& stored);
    // Appends at the end, leaves the caret there and takes the focus.
    void append(const QString& stored);

private:
    void edited(const QString& shown);

    Rule m_rule;
    QString m_accepted;
};

QString piShown(QString stored);
QString piStored(QString shown);

} // namespace curvix::app
