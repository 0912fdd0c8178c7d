#pragma once

// libxlsxwriter, loaded when the first workbook is written. A function of it that is called stands
// in this list.

#include <xlsxwriter.h>

#include "core/SharedLibrary.h"

#define format_set_align ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_align)
#define format_set_bg_color ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_bg_color)
#define format_set_bold ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_bold)
#define format_set_border ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_border)
#define format_set_font_color ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_font_color)
#define format_set_indent ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_indent)
#define format_set_num_format ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_num_format)
#define format_set_text_wrap ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_text_wrap)
#define format_set_underline ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_underline)
#define format_set_unlocked ZOLMARA_FUNCTION_OF(XlsxLibrary, format_set_unlocked)
#define lxw_strerror ZOLMARA_FUNCTION_OF(XlsxLibrary, lxw_strerror)
#define lxw_workbook_free ZOLMARA_FUNCTION_OF(XlsxLibrary, lxw_workbook_free)
#define workbook_add_format ZOLMARA_FUNCTION_OF(XlsxLibrary, workbook_add_format)
#define workbook_add_worksheet ZOLMARA_FUNCTION_OF(XlsxLibrary, workbook_add_worksheet)
#define workbook_close ZOLMARA_FUNCTION_OF(XlsxLibrary, workbook_close)
#define workbook_define_name ZOLMARA_FUNCTION_OF(XlsxLibrary, workbook_define_name)
#define workbook_new_opt ZOLMARA_FUNCTION_OF(XlsxLibrary, workbook_new_opt)
#define worksheet_autofilter ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_autofilter)
#define worksheet_fit_to_pages ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_fit_to_pages)
#define worksheet_freeze_panes ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_freeze_panes)
#define worksheet_merge_range ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_merge_range)
#define worksheet_print_area ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_print_area)
#define worksheet_protect ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_protect)
#define worksheet_repeat_columns ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_repeat_columns)
#define worksheet_repeat_rows ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_repeat_rows)
#define worksheet_set_column ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_column)
#define worksheet_set_column_opt ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_column_opt)
#define worksheet_set_footer ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_footer)
#define worksheet_set_landscape ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_landscape)
#define worksheet_set_paper ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_paper)
#define worksheet_set_row ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_row)
#define worksheet_set_row_opt ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_set_row_opt)
#define worksheet_write_array_formula_num \
    ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_array_formula_num)
#define worksheet_write_blank ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_blank)
#define worksheet_write_formula_num ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_formula_num)
#define worksheet_write_formula_str ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_formula_str)
#define worksheet_write_number ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_number)
#define worksheet_write_string ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_string)
#define worksheet_write_url_opt ZOLMARA_FUNCTION_OF(XlsxLibrary, worksheet_write_url_opt)
