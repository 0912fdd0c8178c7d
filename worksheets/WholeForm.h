#pragma once

// What a worksheet's table must have before anything is added up or printed from it: its lines of
// the form, those that follow the cost centers or the components, and its columns. A sum over a
// table that lacks one of them is wrong and looks right.

#include <string_view>

namespace zolmara {

class KeptColumns;

/// Whether whoever asks wants the worksheet's amounts in memory, where they are read together with
/// its lines, or only goes through them.
enum class FormAmounts { Kept, Passing };

/// StoreError with the worksheet and the line or column that is missing: of the worksheet, or of
/// the list of cost centers or components that its lines follow. A column that belongs to no cost
/// center is told, too. A name that is no worksheet, or one whose table is not there, is passed
/// over.
void NeedWholeForm(std::string_view item, FormAmounts amounts = FormAmounts::Kept);

/// The same within a calculation: lines and columns that the calculation before found whole, and
/// that have not changed since, are not looked at again.
void NeedWholeForm(std::string_view item, KeptColumns& kept);

}  // namespace zolmara
