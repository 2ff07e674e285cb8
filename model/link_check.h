#pragma once

#include "eval/formula.h"
#include "eval/symbolic.h"

#include <QString>

#include <utility>

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

} // namespace curvix::model
