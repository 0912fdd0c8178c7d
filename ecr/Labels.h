#pragma once

// The records ahead of the cells: the header of the file, and the names of what it reports.

#include <string>
#include <string_view>

#include "core/DateTime.h"

namespace zolmara {

struct EcrRun;

/// The three header records: who reports which period, the form, and the file's stamp.
void ECR_Type1(EcrRun& run, const DateTime& stamp);

/// True for the beginning of an electronic report of this home office.
bool IsOwnEcr(std::string_view head);

/// The names of the cost centers, the labels of their statistics, and those of the pools.
void ECR_Type2(EcrRun& run);

/// The first 2 and the last 4 characters of the home office's number, which stand for it in the
/// header and in the names of the files.
std::string ShortProviderNumber();

}  // namespace zolmara
