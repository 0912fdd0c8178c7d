// The functions of the dialect that SQLite lacks or means otherwise.

#include "store/sql/SqlFunctions.h"

#include <sqlite3.h>

#include <cmath>
#include <string>

#include "core/Globals.h"
#include "store/base/Sqlite.h"

namespace zolmara {
namespace {

bool IsNumberValue(sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}
bool IsNullValue(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)))
                : std::string_view();
}

void ResultText(sqlite3_context* context, std::string_view text) {
    sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

Variant VariantOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return std::int64_t{sqlite3_value_int64(value)};
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        default:
            return std::string(TextOf(value));
    }
}

/// A function of one argument for which Null gives Null.
template <auto Body>
void OfOne(sqlite3_context* context, int, sqlite3_value** args) {
    if (!IsNullValue(args[0])) Body(context, args[0]);
}

/// Four exact decimals; text that reads as a number counts, other text stays as it is.
void ToCurrency(sqlite3_context* context, sqlite3_value* value) {
    double number = sqlite3_value_double(value);
    if (!IsNumberValue(value)) {
        const auto parsed = ParseNumber(TextOf(value));
        if (!parsed) return sqlite3_result_value(context, value);
        number = *parsed;
    }
    sqlite3_result_double(context, Currency::Holds(number) ? Currency(number).ToDouble() : number);
}

void ToNumber(sqlite3_context* context, sqlite3_value* value) {
    if (!IsNumberValue(value))
        if (const auto parsed = ParseNumber(TextOf(value)))
            return sqlite3_result_double(context, *parsed);
    sqlite3_result_value(context, value);
}

/// A whole number for a 16 bit field; a half goes to the even one.
void ToInteger(sqlite3_context* context, sqlite3_value* value) {
    const auto number = ParseNumber(TextOf(value));
    if (!number || std::abs(*number) > 1e15) return sqlite3_result_value(context, value);
    sqlite3_result_int64(context, std::llrint(*number));
}

void ToText(sqlite3_context* context, sqlite3_value* value) {
    if (!IsNumberValue(value)) return sqlite3_result_value(context, value);
    ResultText(context, NumberText(sqlite3_value_double(value)));
}

void ToDate(sqlite3_context* context, sqlite3_value* value) {
    if (const auto date = ParseStoreDate(TextOf(value)))
        return sqlite3_result_value(context, value);
    const auto date = ParseDate(TextOf(value));
    if (!date) return sqlite3_result_value(context, value);
    ResultText(context, StoreDateText(*date));
}

void UpperCase(sqlite3_context* context, sqlite3_value* value) {
    ResultText(context, UCase(TextOf(value)));
}
void LowerCase(sqlite3_context* context, sqlite3_value* value) {
    ResultText(context, LCase(TextOf(value)));
}
void WholeBelow(sqlite3_context* context, sqlite3_value* value) {
    sqlite3_result_double(context, std::floor(sqlite3_value_double(value)));
}
void CutToWhole(sqlite3_context* context, sqlite3_value* value) {
    sqlite3_result_double(context, std::trunc(sqlite3_value_double(value)));
}

std::size_t CountOf(sqlite3_value* value) {
    const auto count = sqlite3_value_int64(value);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

void LeftFunction(sqlite3_context* context, int, sqlite3_value** args) {
    if (!IsNullValue(args[0])) ResultText(context, LeftText(TextOf(args[0]), CountOf(args[1])));
}

void RightFunction(sqlite3_context* context, int, sqlite3_value** args) {
    if (IsNullValue(args[0])) return;
    const auto text = TextOf(args[0]);
    const auto length = TextLength(text);
    const auto count = std::min(CountOf(args[1]), length);
    ResultText(context, MidText(text, length - count + 1));
}

void MidFunction(sqlite3_context* context, int count, sqlite3_value** args) {
    if (IsNullValue(args[0])) return;
    const auto start = std::max<std::size_t>(CountOf(args[1]), 1);
    const auto length = count > 2 ? CountOf(args[2]) : std::string_view::npos;
    ResultText(context, MidText(TextOf(args[0]), start, length));
}

void FormatFunction(sqlite3_context* context, int, sqlite3_value** args) {
    Variant value = VariantOf(args[0]);
    if (value.IsText())
        if (const auto date = ParseStoreDate(value.AsText())) value = *date;
    ResultText(context, Format(value, TextOf(args[1])));
}

void PowerFunction(sqlite3_context* context, int, sqlite3_value** args) {
    if (IsNullValue(args[0]) || IsNullValue(args[1])) return;
    sqlite3_result_double(context,
                          std::pow(sqlite3_value_double(args[0]), sqlite3_value_double(args[1])));
}

// --- Aggregates

/// A sum in plain doubles, one addition at a time in the order of the rows; Nulls are passed
/// over, and of nothing it is Null. The library's own sum compensates in later versions, and a
/// figure must not depend on the version.
struct SumState {
    double Total;
    bool Any;
};

void SumStep(sqlite3_context* context, int, sqlite3_value** args) {
    if (IsNullValue(args[0])) return;
    auto* state = static_cast<SumState*>(sqlite3_aggregate_context(context, sizeof(SumState)));
    if (!state) return sqlite3_result_error_nomem(context);
    state->Total = state->Total + sqlite3_value_double(args[0]);
    state->Any = true;
}

void SumFinal(sqlite3_context* context) {
    const auto* state = static_cast<SumState*>(sqlite3_aggregate_context(context, 0));
    if (state && state->Any) sqlite3_result_double(context, state->Total);
}

struct EdgeState {
    sqlite3_value* Value;
};

template <bool KeepFirst>
void EdgeStep(sqlite3_context* context, int, sqlite3_value** args) {
    auto* state = static_cast<EdgeState*>(sqlite3_aggregate_context(context, sizeof(EdgeState)));
    if (!state) return sqlite3_result_error_nomem(context);
    if (state->Value && KeepFirst) return;
    sqlite3_value_free(state->Value);
    state->Value = sqlite3_value_dup(args[0]);
}

void EdgeFinal(sqlite3_context* context) {
    auto* state = static_cast<EdgeState*>(sqlite3_aggregate_context(context, 0));
    if (!state) return;
    sqlite3_result_value(context, state->Value);
    sqlite3_value_free(state->Value);
}

int CompareNoCase(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return CompareText({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
struct Scalar {
    const char* Name;
    int Arguments;
    Function Body;
};
constexpr Scalar kScalars[] = {
    {"zcur", 1, OfOne<ToCurrency>},  {"znum", 1, OfOne<ToNumber>},
    {"zint16", 1, OfOne<ToInteger>}, {"ztext", 1, OfOne<ToText>},
    {"zdate", 1, OfOne<ToDate>},     {"zucase", 1, OfOne<UpperCase>},
    {"zlcase", 1, OfOne<LowerCase>}, {"zint", 1, OfOne<WholeBelow>},
    {"zfix", 1, OfOne<CutToWhole>},  {"zleft", 2, LeftFunction},
    {"zright", 2, RightFunction},    {"zmid", 2, MidFunction},
    {"zmid", 3, MidFunction},        {"zformat", 2, FormatFunction},
    {"zpow", 2, PowerFunction},
};

struct Aggregate {
    const char* Name;
    Function Step;
    void (*Final)(sqlite3_context*);
};
constexpr Aggregate kAggregates[] = {
    {"zsum", SumStep, SumFinal},
    {"zfirst", EdgeStep<true>, EdgeFinal},
    {"zlast", EdgeStep<false>, EdgeFinal},
};

}  // namespace

void RegisterSqlFunctions(sqlite3* handle) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    int code = SQLITE_OK;
    for (const auto& scalar : kScalars)
        code |= sqlite3_create_function_v2(handle, scalar.Name, scalar.Arguments, kFlags, nullptr,
                                           scalar.Body, nullptr, nullptr, nullptr);
    for (const auto& aggregate : kAggregates)
        code |= sqlite3_create_function_v2(handle, aggregate.Name, 1, kFlags, nullptr, nullptr,
                                           aggregate.Step, aggregate.Final, nullptr);
    code |=
        sqlite3_create_collation_v2(handle, "NOCASE", SQLITE_UTF8, nullptr, CompareNoCase, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(handle, code, "");
}

}  // namespace zolmara
