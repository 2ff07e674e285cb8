#pragma once

#include <QString>

#include <array>

namespace curvix::app {

// One button of the keypad: its caption and what it types into the function box.
struct Token {
    const char* caption;
    const char* inserted; // appended to the function box; the pi and clear keys differ
};

inline constexpr int kPiToken = 16;
inline constexpr int kVariableToken = 30;
inline constexpr int kClearToken = 31;

// The 32 keys in their order: digits, operators, pi, e, parentheses, functions, the
// variable (its caption follows the label box) and clear. "log" types the base-10
// logarithm; "C" empties the function box.
inline constexpr std::array<Token, 32> kTokens{{
    {"0", "0"},       {"1", "1"},       {"2", "2"},       {"3", "3"},
    {"4", "4"},       {"5", "5"},       {"6", "6"},       {"7", "7"},
    {"8", "8"},       {"9", "9"},       {".", "."},       {"+", "+"},
    {"-", "-"},       {"*", "*"},       {"/", "/"},       {"^", "^"},
    {"p", ""},        {"e", "e"},       {"(", "("},       {")", ")"},
    {"sqrt", "sqrt("}, {"sin", "sin("}, {"cos", "cos("}, {"tan", "tan("},
    {"asin", "asin("}, {"acos", "acos("}, {"atan", "atan("}, {"Exp", "Exp("},
    {"ln", "ln("},    {"log", "log10("}, {"x", "x"},      {"C", ""},
}};

// Where each key sits on the pad (row, column), so that digits form a block.
inline constexpr std::array<std::array<int, 2>, 32> kTokenPlaces{{
    {3, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 0}, {1, 1}, {1, 2}, {0, 0}, {0, 1}, {0, 2},
    {3, 1}, {3, 3}, {2, 3}, {1, 3}, {0, 3}, {0, 4}, {1, 4}, {2, 4}, {3, 4}, {3, 5},
    {0, 6}, {1, 6}, {2, 6}, {3, 6}, {1, 7}, {2, 7}, {3, 7}, {0, 7}, {1, 5}, {2, 5},
    {3, 2}, {0, 5},
}};

} // namespace curvix::app
