#pragma once

// libzip, loaded when the first packed file is read. A function of it that is called stands in this
// list.

#include <zip.h>

#include "core/SharedLibrary.h"

#define zip_discard ZOLMARA_FUNCTION_OF(ZipLibrary, zip_discard)
#define zip_error_fini ZOLMARA_FUNCTION_OF(ZipLibrary, zip_error_fini)
#define zip_error_init ZOLMARA_FUNCTION_OF(ZipLibrary, zip_error_init)
#define zip_fclose ZOLMARA_FUNCTION_OF(ZipLibrary, zip_fclose)
#define zip_fopen ZOLMARA_FUNCTION_OF(ZipLibrary, zip_fopen)
#define zip_fopen_index ZOLMARA_FUNCTION_OF(ZipLibrary, zip_fopen_index)
#define zip_fread ZOLMARA_FUNCTION_OF(ZipLibrary, zip_fread)
#define zip_get_num_entries ZOLMARA_FUNCTION_OF(ZipLibrary, zip_get_num_entries)
#define zip_name_locate ZOLMARA_FUNCTION_OF(ZipLibrary, zip_name_locate)
#define zip_open ZOLMARA_FUNCTION_OF(ZipLibrary, zip_open)
#define zip_open_from_source ZOLMARA_FUNCTION_OF(ZipLibrary, zip_open_from_source)
#define zip_source_buffer_create ZOLMARA_FUNCTION_OF(ZipLibrary, zip_source_buffer_create)
#define zip_source_free ZOLMARA_FUNCTION_OF(ZipLibrary, zip_source_free)
#define zip_stat_index ZOLMARA_FUNCTION_OF(ZipLibrary, zip_stat_index)
