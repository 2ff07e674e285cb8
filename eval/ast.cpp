#include "eval/ast.h"

#include <array>
#include <cmath>

namespace curvix::eval {

namespace {

struct FunctionName {
    const char* name;
    Function function;
};

constexpr std::array<FunctionName, 20> kFunctionNames{{
    {"sqrt", Function::Sqrt},   {"sin", Function::Sin},     {"cos", Function::Cos},
    {"tan", Function::Tan},     {"asin", Function::Asin},   {"acos", Function::Acos},
    {"atan", Function::Atan},   {"exp", Function::Exp},     {"Exp", Function::Exp},
    {"ln", Function::Ln},       {"log10", Function::Log10}, {"log", Function::Log10},
    {"abs", Function::Abs},     {"sign", Function::Sign},   {"sinh", Function::Sinh},
    {"cosh", Function::Cosh},   {"tanh", Function::Tanh},   {"asinh", Function::Asinh},
    {"acosh", Function::Acosh}, {"atanh", Function::Atanh},
}};

} // namespace

std::optional<Function> functionByName(QStringView name)
{
    for (const FunctionName& entry : kFunctionNames) {
        if (name == QLatin1StringView(entry.name))
            return entry.function;
    }
    return std::nullopt;
}

const char* functionName(Function function)
{
    // The first spelling in the table is the usual one.
    for (const FunctionName& entry : kFunctionNames) {
        if (entry.function == function)
            return entry.name;
    }
    return "";
}

double applyFunction(Function function, double v)
{
    switch (function) {
    case Function::Sqrt: return std::sqrt(v);
    case Function::Sin: return std::sin(v);
    case Function::Cos: return std::cos(v);
    case Function::Tan: return std::tan(v);
    case Function::Asin: return std::asin(v);
    case Function::Acos: return std::acos(v);
    case Function::Atan: return std::atan(v);
    case Function::Exp: return std::exp(v);
    case Function::Ln: return std::log(v);
    case Function::Log10: return std::log10(v);
    case Function::Abs: return std::fabs(v);
    case Function::Sign: return v > 0 ? 1.0 : (v < 0 ? -1.0 : v);
    case Function::Sinh: return std::sinh(v);
    case Function::Cosh: return std::cosh(v);
    case Function::Tanh: return std::tanh(v);
    case Function::Asinh: return std::asinh(v);
    case Function::Acosh: return std::acosh(v);
    case Function::Atanh: return std::atanh(v);
    }
    return v;
}

} // namespace curvix::eval
