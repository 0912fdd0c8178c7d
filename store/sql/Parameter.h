#pragma once

// How the values of a statement are bound.

namespace zolmara::sql {

/// How a literal or argument is put into its place, by what it is compared with or stored in.
enum class BindAs {
    Plain,
    Currency,  ///< four decimals
    Number,    ///< text that reads as a number becomes that number
    Integer,
    Text,  ///< a number in its text form; cut to Size where there is one
    Date,
};

struct Parameter {
    int Literal;
    BindAs How;
    int Size;
    bool operator==(const Parameter&) const = default;
};

}  // namespace zolmara::sql
