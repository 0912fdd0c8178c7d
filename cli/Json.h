#pragma once

// JSON on standard output, for what is more than a table.

#include <nlohmann/json.hpp>

#include "core/Variant.h"

namespace zolmara::cli {

using JsonDoc = nlohmann::ordered_json;

/// A value: numbers as numbers, Null as null, dates as text.
JsonDoc JsonValue(const Variant& value);
void PutJson(const JsonDoc& json);

}  // namespace zolmara::cli
