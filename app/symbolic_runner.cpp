#include "app/symbolic_runner.h"

#include "eval/symbolic.h"

#include <QtConcurrent/QtConcurrentRun>

namespace curvix::app {

SymbolicRunner::SymbolicRunner(model::Prompter& prompter, QObject* parent)
    : QObject(parent), m_prompter(prompter)
{
    connect(&m_watcher, &QFutureWatcher<Outcome>::finished, this, &SymbolicRunner::finish);
    connect(&m_slopeWatcher, &QFutureWatcher<QString>::finished, this, [this] {
        const QString answer = m_slopeWatcher.result();
        if (!answer.isEmpty())
            m_links.derivatives[m_slopeRequest] = answer;
        emit slopeFormulaAnswered(m_slopeRequest.first, m_slopeRequest.second, answer);
    });
}

QString SymbolicRunner::rememberedDerivative(const QString& text, const QString& variable) const
{
    const auto it = m_links.derivatives.find({text, variable});
    return it == m_links.derivatives.end() ? QString() : it->second;
}

void SymbolicRunner::requestSlopeFormula(const QString& text, const QString& variable)
{
    if (m_slopeWatcher.isRunning())
        return;
    m_slopeRequest = {text, variable};
    eval::SymbolicOptions options = m_baseOptions;
    options.cancel = m_slopeCancel;
    m_slopeWatcher.setFuture(QtConcurrent::run([text, variable, options] {
        return eval::SymbolicDerivative(text, variable, 1, {}, options);
    }));
}

SymbolicRunner::~SymbolicRunner()
{
    // The worker may not outlive the window that waits for it.
    cancel();
    m_slopeCancel->store(true);
    m_watcher.waitForFinished();
    m_slopeWatcher.waitForFinished();
}

bool SymbolicRunner::busy() const
{
    return m_watcher.isRunning();
}

void SymbolicRunner::request(bool derivative, const QString& text, const QString& variable, int source,
                             eval::AngleUnit unit)
{
    if (busy())
        return;
    m_derivative = derivative;
    m_source = source;
    m_text = text;
    m_variable = variable;
    m_cancel = std::make_shared<std::atomic_bool>(false);
    eval::SymbolicOptions options = m_baseOptions;
    options.cancel = m_cancel;
    options.angleUnit = int(unit);
    m_watcher.setFuture(QtConcurrent::run([derivative, text, variable, options] {
        Outcome outcome;
        const auto report = [&outcome](const QString& m) { outcome.messages << m; };
        outcome.answer = derivative ? eval::SymbolicDerivative(text, variable, 1, report, options)
                                    : eval::SymbolicPrimitive(text, variable, report, options);
        outcome.cancelled = eval::wasCancelled(options);
        return outcome;
    }));
    emit busyChanged(true);
}

void SymbolicRunner::cancel()
{
    if (m_cancel)
        m_cancel->store(true);
}

void SymbolicRunner::finish()
{
    const Outcome outcome = m_watcher.result();
    emit busyChanged(false);
    if (outcome.cancelled)
        return;
    for (const QString& message : outcome.messages)
        m_prompter.message(message);
    if (outcome.answer.isEmpty())
        return;
    auto& remembered = m_derivative ? m_links.derivatives : m_links.primitives;
    remembered[{m_text, m_variable}] = outcome.answer;
    emit answered(m_derivative, m_source, outcome.answer);
}

bool SymbolicRunner::RememberedLinks::isDerivativeOf(const QString& source, const QString& candidate,
                                                     const QString& variable)
{
    const auto it = derivatives.find({source, variable});
    return it != derivatives.end() && it->second == candidate;
}

bool SymbolicRunner::RememberedLinks::isPrimitiveOf(const QString& source, const QString& candidate,
                                                    const QString& variable)
{
    const auto it = primitives.find({source, variable});
    return it != primitives.end() && it->second == candidate;
}

} // namespace curvix::app
