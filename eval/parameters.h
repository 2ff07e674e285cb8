#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace curvix::eval {

// A named number the user declares, the a of a·sin(b·x+c): not a second variable, but a
// value a formula reads as it reads a number, moved with a slider between its bounds.
struct Parameter {
    QString name; // one lower-case letter, neither the drawing's variable nor e
    double value = 1;
    double minimum = -5;
    double maximum = 5;
    double step = 0.1;

    friend bool operator==(const Parameter&, const Parameter&) = default;
};

using ParameterList = std::vector<Parameter>;

// One ASCII lower-case letter that is neither the variable nor e (Euler's number).
bool isParameterName(const QString& name, const QString& variable);

// The index of the parameter with this name, -1 when none is declared so.
int parameterIndex(const ParameterList& parameters, const QString& name);
// The declared names in order.
QStringList parameterNames(const ParameterList& parameters);

// Letters written together are a product when each is the variable or a declared
// parameter and one at least is a parameter: "ax^2+bx+c" becomes "a*x^2+b*x+c" and "2ab"
// "2a*b". Functions, pi and every other name are left as typed, so without parameters the
// text comes back unchanged.
QString splitParameterProducts(const QString& text, const QString& variable,
                               const ParameterList& parameters);

// The declared names a formula uses, alone or in a product, in the order declared.
QStringList parametersUsedBy(const QString& text, const QString& variable,
                             const ParameterList& parameters);

// The letters that, declared as parameters, would make the formula compile: "sin(bx)"
// gives b. Empty when nothing is missing, and when an unknown name is more than such
// letters ("xsin(x)", "foo(x)", "Ax"): a real mistake stays one.
QStringList undeclaredLetters(const QString& text, const QString& variable,
                              const ParameterList& parameters);

} // namespace curvix::eval
