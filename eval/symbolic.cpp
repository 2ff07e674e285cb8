#include "eval/symbolic.h"

#include "eval/evaluator.h"
#include "eval/parser.h"
#include "eval/symbolic_cas.h"
#include "eval/symbolic_request.h"

#include <QCoreApplication>
#include <QByteArray>
#include <QLocale>
#include <QStringList>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace curvix::eval {

namespace {
// Messages a user reads; the command line shows them untranslated.
struct SymbolicText {
    Q_DECLARE_TR_FUNCTIONS(SymbolicText)
};
} // namespace

namespace {

using namespace std::chrono_literals;
using namespace symbolic_request;

// --- the worker thread ------------------------------------------------------------------

// Runs every computation on one long-lived thread: Giac keeps global state, so two
// computations must never overlap, and a computation that timed out must have stopped
// before the next one starts. Callers on any thread block until their answer, the time
// limit or their cancel flag.
class CasWorker {
public:
    static CasWorker& instance()
    {
        static CasWorker* worker = new CasWorker; // never destroyed: the thread never ends
        return *worker;
    }

    // The answer, or nothing when the time ran out or the caller gave up.
    std::optional<cas::Answer> run(cas::Problem problem, const SymbolicOptions& options)
    {
        if (wasCancelled(options))
            return std::nullopt;
        const auto deadline = std::chrono::steady_clock::now() + options.timeout;
        auto job = std::make_shared<Job>();
        job->problem = std::move(problem);
        {
            std::lock_guard lock(m_mutex);
            m_queue.push_back(job);
        }
        m_work.notify_one();
        std::unique_lock lock(m_mutex);
        for (;;) {
            // Slices of 10 ms, so that a raised cancel flag is seen promptly.
            const auto sliceEnd = std::min<std::chrono::steady_clock::time_point>(
                deadline, std::chrono::steady_clock::now() + 10ms);
            m_finished.wait_until(lock, sliceEnd, [&] { return job->done; });
            if (job->done)
                return std::move(job->answer);
            if (wasCancelled(options) || std::chrono::steady_clock::now() >= deadline) {
                const auto queued = std::find(m_queue.begin(), m_queue.end(), job);
                if (queued != m_queue.end())
                    m_queue.erase(queued);
                else if (m_running == job)
                    cas::interrupt();
                return std::nullopt;
            }
        }
    }

private:
    struct Job {
        cas::Problem problem;
        cas::Answer answer;
        bool done = false;
    };

    CasWorker()
    {
        m_thread = QThread::create([this] { serve(); });
        // The CAS recurses deeply on large expressions.
        m_thread->setStackSize(256u * 1024u * 1024u);
        m_thread->start();
        std::atexit([] { instance().stop(); });
    }

    void serve()
    {
        for (;;) {
            std::shared_ptr<Job> job;
            {
                std::unique_lock lock(m_mutex);
                m_work.wait(lock, [&] { return !m_queue.empty(); });
                job = m_queue.front();
                m_queue.pop_front();
                m_running = job;
                cas::clearInterrupt();
            }
            cas::Answer answer = cas::solve(job->problem);
            {
                std::lock_guard lock(m_mutex);
                job->answer = std::move(answer);
                job->done = true;
                m_running.reset();
            }
            m_finished.notify_all();
        }
    }

    // At exit: drop waiting work and give a running computation a moment to stop, so that
    // the CAS's own data are not torn down under it.
    void stop()
    {
        std::unique_lock lock(m_mutex);
        m_queue.clear();
        if (m_running)
            cas::interrupt();
        m_finished.wait_for(lock, 2s, [&] { return !m_running; });
    }

    std::mutex m_mutex;
    std::condition_variable m_work;
    std::condition_variable m_finished;
    std::deque<std::shared_ptr<Job>> m_queue;
    std::shared_ptr<Job> m_running;
    QThread* m_thread = nullptr;
};

// --- choosing the answer ------------------------------------------------------------------

// The values of a text in the formula language (pi written "pi") at the sample points, as
// the function box would compute them, one array for each set of parameter values; nothing
// when the box does not read it.
std::optional<std::vector<cas::SampleValues>> boxValues(const QString& text,
                                                        const QString& variable,
                                                        const SymbolicOptions& options)
{
    ExpressionEvaluator evaluator;
    const QString boxText = AngleTextInRadians(
        ReplaceText(text, QStringLiteral("pi"), QString(kPiChar)), options.angleUnit);
    // Known before the text is read, so that the box takes the parameters as names.
    for (const QString& name : options.parameters)
        evaluator.DefineVariable(name);
    const QString prepared = PrepareExpressionText(
        evaluator, boxText, QStringLiteral("f(%1)").arg(variable), {}, QLocale::c());
    if (prepared.isEmpty())
        return std::nullopt;
    const int variableId = evaluator.DefineVariable(variable);
    std::vector<int> parameterIds;
    for (const QString& name : options.parameters)
        parameterIds.push_back(evaluator.DefineVariable(name));
    const int expressionId = evaluator.SetExpression(prepared);
    if (expressionId < 0)
        return std::nullopt;
    std::vector<cas::SampleValues> sets(cas::parameterSetCount(options.parameters.size()));
    for (std::size_t set = 0; set < sets.size(); ++set) {
        for (std::size_t i = 0; i < parameterIds.size(); ++i)
            evaluator.SetVariable(parameterIds[i], cas::parameterValue(set, i));
        evaluator.EvaluateBatch(expressionId, variableId, cas::kSamplePoints, sets[set]);
    }
    return sets;
}

// Whether values ys, as the function box computes a form, are right wherever the problem's
// function is defined: finite there, and equal to the CAS's own values where those are
// finite (they overflow where a form such as exp(x^3)/exp(2x^3) does). Outside the
// function's domain a form may have values or not: ln(sqrt(x))' = 1/(2x) is right.
bool agreesWithValues(const cas::SampleValues& ys, const cas::SampleValues& values,
                      bool upToConstant, const cas::SampleValues& defined)
{
    // A primitive's constant, the same at every point: taken where the values are smallest,
    // so that it carries little rounding.
    double offset = 0;
    double smallest = INFINITY;
    for (std::size_t i = 0; upToConstant && i < ys.size(); ++i) {
        const double a = ys[i];
        const double b = values[i];
        const double size = std::max(std::fabs(a), std::fabs(b));
        if (std::isfinite(defined[i]) && std::isfinite(a - b) && size < smallest) {
            smallest = size;
            offset = a - b;
        }
    }
    for (std::size_t i = 0; i < ys.size(); ++i) {
        const double a = ys[i];
        const double b = values[i];
        if (!std::isfinite(defined[i]))
            continue;
        if (!std::isfinite(a))
            return false;
        if (!std::isfinite(b))
            continue;
        const double shifted = a - offset;
        if (std::fabs(shifted - b) > 1e-6 * std::max({1.0, std::fabs(a), std::fabs(b)}))
            return false;
    }
    return true;
}

// Whether a form holds for every set of parameter values; a primitive's constant may
// differ from set to set.
bool formHolds(const QString& form, const QString& variable, const cas::Answer& answer,
               const std::vector<cas::SampleValues>& defined, const SymbolicOptions& options)
{
    const auto ys = boxValues(form, variable, options);
    if (!ys || ys->size() != answer.values.size() || ys->size() != defined.size())
        return false;
    for (std::size_t set = 0; set < ys->size(); ++set) {
        if (!agreesWithValues((*ys)[set], answer.values[set], answer.upToConstant, defined[set]))
            return false;
    }
    return true;
}

// The shortest form that the evaluator accepts and that is right where the problem's
// function (its values: defined) is.
std::optional<QString> bestForm(const cas::Answer& answer, const QString& variable,
                                const std::vector<cas::SampleValues>& defined,
                                const SymbolicOptions& options)
{
    // Shortest first, the CAS's order among equals: the first that holds is the answer.
    std::vector<const QString*> byLength;
    for (const QString& form : answer.forms)
        byLength.push_back(&form);
    std::stable_sort(byLength.begin(), byLength.end(),
                     [](const QString* a, const QString* b) { return a->size() < b->size(); });
    for (const QString* form : byLength) {
        if (formHolds(*form, variable, answer, defined, options))
            return *form;
    }
    return std::nullopt;
}

// The options' parameters that can be parameters of this request: one letter, not the
// variable, not e, each once.
QStringList requestParameters(const QStringList& parameters, const QString& variable)
{
    QStringList names;
    for (const QString& name : parameters) {
        if (isParameterName(name, variable) && !names.contains(name))
            names << name;
    }
    return names;
}

// --- the requests of the procedures -------------------------------------------------------

enum class Outcome { Answer,
                     Failed,
                     NoEnd,
                     Cancelled };

// Request steps 2-6 and the reading of the answer.
Outcome callLibrary(QString formula, const QString& framedPrefix, const QString& framedSuffix,
                    const SymbolicOptions& options, QString& answer)
{
    if (formula.contains(u','))
        formula.replace(u',', u'.');
    formula = ReplaceText(formula, QString(kPiChar), QStringLiteral("pi"));
    formula = RewriteLog10(formula);
    const QString request = framedPrefix + formula + framedSuffix;

    const QByteArray requestBuffer =
        request.leftJustified(kSymbolicRequestLength, u' ', true).toLatin1();
    QByteArray resultBuffer(kSymbolicResultSize, ' ');
    const std::int32_t rc =
        options.library
            ? options.library(requestBuffer.constData(), resultBuffer.data(), kSymbolicResultSize)
            : symbolic_calculate(requestBuffer.constData(), resultBuffer.data(),
                                 kSymbolicResultSize, options);
    if (rc < 1)
        return wasCancelled(options) ? Outcome::Cancelled : Outcome::Failed;
    const QString result = QString::fromLatin1(resultBuffer.constData(), resultBuffer.size());
    const qint32 p = NulPosition(result);
    if (p == 0)
        return Outcome::NoEnd;
    answer = ReplaceText(result.left(p - 1), QStringLiteral("pi"), QString(kPiChar));
    return Outcome::Answer;
}

void show(const Report& report, const QString& message)
{
    if (report)
        report(message);
}

QString variableOrX(const QString& variable)
{
    return variable.isEmpty() ? QStringLiteral("x") : variable;
}

} // namespace

bool wasCancelled(const SymbolicOptions& options)
{
    return options.cancel && options.cancel->load();
}

std::int32_t symbolic_calculate(const char* request, char* result, std::int32_t size,
                                const SymbolicOptions& options)
{
    if (!result || size < 1)
        return -1;
    result[0] = '\0';
    if (!request)
        return -1;
    const std::optional<Request> parsed = parseRequest(QString::fromLatin1(request));
    if (!parsed)
        return -1;

    SymbolicOptions used = options;
    used.parameters = requestParameters(options.parameters, parsed->variable);
    const QString formula = splitGluedNames(parsed->formula, parsed->variable, used.parameters);
    // Always {variable, e, parameters...}, so that a parameter's index is fixed; a variable
    // called e shadows Euler's number.
    ParseResult tree =
        parseFormula(formula, QStringList{parsed->variable, QStringLiteral("e")} + used.parameters);
    if (!tree.ok())
        return 0;

    cas::Problem problem;
    problem.operation = parsed->operation;
    problem.decimals = hasDecimals(tree.tree);
    problem.formula = std::move(tree.tree);
    problem.parameters = used.parameters;
    problem.variable = parsed->variable;
    problem.order = parsed->order;
    problem.angleUnit = options.angleUnit;
    const std::optional<cas::Answer> answer =
        CasWorker::instance().run(std::move(problem), options);
    if (!answer || answer->forms.empty())
        return 0;
    // Where the problem's function is defined; a formula the box cannot read counts as
    // defined everywhere, so that every form must hold at every point.
    std::vector<cas::SampleValues> defined(cas::parameterSetCount(used.parameters.size()));
    for (cas::SampleValues& set : defined)
        set.fill(0);
    if (auto values = boxValues(formula, parsed->variable, used))
        defined = std::move(*values);
    const std::optional<QString> best = bestForm(*answer, parsed->variable, defined, used);
    if (!best)
        return 0;
    const QByteArray bytes = best->toLatin1();
    if (bytes.size() + 1 > size)
        return 0;
    std::memcpy(result, bytes.constData(), std::size_t(bytes.size()));
    result[bytes.size()] = '\0';
    return 1;
}

QString SymbolicDerivative(const QString& formula, const QString& variable, qint16 order,
                           const Report& report, const SymbolicOptions& options)
{
    if (formula.size() > kSymbolicRequestLength) {
        show(report, QStringLiteral("too long expression"));
        return {};
    }
    const QString v = variableOrX(variable);
    QString answer;
    switch (callLibrary(formula, QStringLiteral("DIFF("),
                        QStringLiteral(",%1,%2)").arg(v).arg(order), options, answer)) {
    case Outcome::Answer: return answer;
    case Outcome::NoEnd:
    case Outcome::Cancelled: return {};
    case Outcome::Failed: break;
    }
    show(report, SymbolicText::tr("Error in derivative calculation"));
    return {};
}

QString SymbolicPrimitive(const QString& formula, const QString& variable, const Report& report,
                          const SymbolicOptions& options)
{
    if (formula.size() > kSymbolicRequestLength) {
        show(report, QStringLiteral("too long expression"));
        return {};
    }
    const QString v = variableOrX(variable);
    QString answer;
    switch (callLibrary(formula, QStringLiteral("INT("), QStringLiteral(",%1)").arg(v), options,
                        answer)) {
    case Outcome::Answer: return answer;
    case Outcome::NoEnd:
    case Outcome::Cancelled: return {};
    case Outcome::Failed: break;
    }
    // Two boxes for one failure, deliberately.
    show(report, SymbolicText::tr("Error in calculation of primitive function"));
    show(report, SymbolicText::tr("Error in primitive calculation"));
    return {};
}

qint32 NulPosition(const QString& text)
{
    return qint32(text.indexOf(QChar(0)) + 1);
}

bool IsDerivativeOf(const QString& source, const QString& candidate, const QString& variable,
                    const Report& report, const SymbolicOptions& options)
{
    return SymbolicDerivative(source, variable, 1, report, options) == candidate;
}

bool IsPrimitiveOf(const QString& source, const QString& candidate, const QString& variable,
                   const Report& report, const SymbolicOptions& options)
{
    return SymbolicPrimitive(source, variable, report, options) == candidate;
}

} // namespace curvix::eval
