#pragma once

#include "model/link_check.h"
#include "model/prompter.h"
#include "eval/angle_unit.h"
#include "eval/symbolic.h"

#include <QFutureWatcher>
#include <QObject>
#include <QStringList>

#include <atomic>
#include <map>
#include <memory>

namespace curvix::app {

// Runs the symbolic derivative and primitive off the GUI thread, one request at a time.
// The answer arrives by a signal; messages of a failed calculation are shown then. The
// answers are remembered, so that drawing one checks its link without a second call.
class SymbolicRunner : public QObject {
    Q_OBJECT
public:
    SymbolicRunner(model::Prompter& prompter, QObject* parent);
    ~SymbolicRunner() override;

    // Asks for the derivative (or a primitive) of the text; source is the entry it belongs
    // to, -1 when the text is not drawn. Refused while another request runs.
    // The answer is read and written in the angle unit: in degrees sin(x)' = ¶cos(x)/180.
    void request(bool derivative, const QString& text, const QString& variable, int source,
                 eval::AngleUnit unit = eval::AngleUnit::Radians);
    // Gives up a running request: no answer and no message follow.
    void cancel();
    bool busy() const;
    // Options every request starts from (the time limit, or a stand-in library in tests).
    void setBaseOptions(const eval::SymbolicOptions& options) { m_baseOptions = options; }
    // The drawing's parameters, which answers keep as symbols.
    void setParameterNames(const QStringList& names) { m_baseOptions.parameters = names; }
    // Whether a text is the remembered derivative or primitive of a source text.
    model::LinkCheck& linkCheck() { return m_links; }

    // The derivative for the slopes of tangents and the trace: asked quietly (no message,
    // no busy state) and beside the commands' requests; one at a time, later asks while
    // one runs are dropped. An empty answer means the library could not.
    void requestSlopeFormula(const QString& text, const QString& variable);
    // A derivative either channel has answered before; "" when none is known.
    QString rememberedDerivative(const QString& text, const QString& variable) const;

signals:
    void answered(bool derivative, int source, const QString& answer);
    void slopeFormulaAnswered(const QString& text, const QString& variable, const QString& answer);
    void busyChanged(bool busy);

private:
    struct Outcome {
        QString answer;
        QStringList messages;
        bool cancelled = false;
    };
    class RememberedLinks : public model::LinkCheck {
    public:
        bool isDerivativeOf(const QString& source, const QString& candidate, const QString& variable) override;
        bool isPrimitiveOf(const QString& source, const QString& candidate, const QString& variable) override;
        // (source, variable) → answer
        std::map<std::pair<QString, QString>, QString> derivatives;
        std::map<std::pair<QString, QString>, QString> primitives;
    };
    void finish();

    model::Prompter& m_prompter;
    QFutureWatcher<Outcome> m_watcher;
    QFutureWatcher<QString> m_slopeWatcher;
    std::pair<QString, QString> m_slopeRequest;
    std::shared_ptr<std::atomic_bool> m_slopeCancel = std::make_shared<std::atomic_bool>(false);
    std::shared_ptr<std::atomic_bool> m_cancel;
    bool m_derivative = true;
    int m_source = -1;
    QString m_text;
    QString m_variable;
    RememberedLinks m_links;
    eval::SymbolicOptions m_baseOptions;
};

} // namespace curvix::app
