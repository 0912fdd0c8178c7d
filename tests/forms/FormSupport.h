#pragma once

// What the tests of worksheet windows have in common.

#include <string>
#include <vector>

#include "forms/WorksheetForm.h"
#include "support/TestCrf.h"

namespace zolmara::test {

class FormTest : public TestCrf {
protected:
    static WorksheetForm Edit(std::string_view item) {
        return DescribeForm(FormMode::Edit, item).value();
    }
    static WorksheetForm View(std::string_view item) {
        return DescribeForm(FormMode::View, item).value();
    }
    /// The headings of the columns that are shown, lines of a heading parted by blanks.
    static std::vector<std::string> Titles(const WorksheetForm& form) {
        std::vector<std::string> titles;
        for (const FormColumn& column : form.Columns)
            if (!column.Hidden) titles.push_back(Replace(column.Title, "|", " "));
        return titles;
    }
    /// The fields that can be keyed on some line.
    static std::vector<std::string> KeyedFields(const WorksheetForm& form) {
        std::vector<std::string> fields;
        for (const FormColumn& column : form.Columns)
            if (!column.Locked) fields.push_back(column.Field);
        return fields;
    }
    static const FormColumn& Column(const WorksheetForm& form, std::string_view field) {
        return form.Columns.at(static_cast<std::size_t>(form.ColumnOf(field)));
    }

    /// Keys one cell into a row that is begun anew, and leaves the row.
    static bool Key(const WorksheetForm& form, double line, std::string_view field,
                    const Variant& value) {
        RowEntry row = BeginRow(form, Currency(line));
        return KeyCell(form, row, form.ColumnOf(field), value) && CommitRow(form, row);
    }
    /// The last box that was shown: "Title|Text".
    std::string LastBox() const {
        return host.Boxes.empty() ? "" : host.Boxes.back().Title + "|" + host.Boxes.back().Text;
    }
};

}  // namespace zolmara::test
