#pragma once

#include "eval/formula.h"
#include "eval/symbolic.h"

#include <QString>

#include <utility>
#include <vector>

namespace curvix::model {

// Whether a typed text is the derivative (or a primitive) of a source entry's text: asked
// by addFunction when the derivative or primitive command left a pending source.
class LinkCheck {
public:
    virtual ~LinkCheck() = default;
    virtual bool isDerivativeOf(const QString& sourceText, const QString& candidate,
                                const QString& variable) = 0;
    virtual bool isPrimitiveOf(const QString& sourceText, const QString& candidate,
                               const QString& variable) = 0;
};

// The symbolic library decides, with these options; its failures go to the report.
class SymbolicLinkCheck : public LinkCheck {
public:
    explicit SymbolicLinkCheck(eval::Report report, eval::SymbolicOptions options = {})
        : m_report(std::move(report)), m_options(std::move(options))
    {
    }

    bool isDerivativeOf(const QString& sourceText, const QString& candidate,
                        const QString& variable) override
    {
        return eval::IsDerivativeOf(sourceText, candidate, variable, m_report, m_options);
    }

    bool isPrimitiveOf(const QString& sourceText, const QString& candidate,
                       const QString& variable) override
    {
        return eval::IsPrimitiveOf(sourceText, candidate, variable, m_report, m_options);
    }

private:
    eval::Report m_report;
    eval::SymbolicOptions m_options;
};

enum class LinkKind { Derivative, Primitive };

// One question addFunction asks of its link check.
struct LinkQuestion {
    LinkKind kind = LinkKind::Derivative;
    QString source;
    QString candidate;
    QString variable;

    friend bool operator==(const LinkQuestion&, const LinkQuestion&) = default;
};

inline bool askLink(LinkCheck& check, const LinkQuestion& q)
{
    return q.kind == LinkKind::Derivative ? check.isDerivativeOf(q.source, q.candidate, q.variable)
                                          : check.isPrimitiveOf(q.source, q.candidate, q.variable);
}

} // namespace curvix::model
