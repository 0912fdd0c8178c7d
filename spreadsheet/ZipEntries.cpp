#include "spreadsheet/ZipEntries.h"

#include <fmt/format.h>

#include "spreadsheet/SheetReaders.h"
#include "spreadsheet/ZipFunctions.h"

namespace zolmara {

namespace {

constexpr std::uint64_t kMegabyte = std::uint64_t{1024} * 1024;
/// Half a million cells of the four columns unpack to some 100 MB.
constexpr std::uint64_t kMaxUnpacked = 512 * kMegabyte;
constexpr zip_int64_t kMaxEntries = 10000;

struct CloseEntry {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

struct ZipEntries::Impl {
    zip_t* Archive = nullptr;
    ~Impl() {
        if (Archive != nullptr) zip_discard(Archive);
    }
};

ZipEntries::ZipEntries(std::string_view archive) : impl_(std::make_unique<Impl>()) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    if (source != nullptr) impl_->Archive = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (impl_->Archive == nullptr && source != nullptr) zip_source_free(source);
    zip_error_fini(&error);
    if (impl_->Archive == nullptr)
        throw UnreadableSheets("it is damaged, protected by a password, or no workbook");
    NeedModestSize();
}

ZipEntries::~ZipEntries() = default;

void ZipEntries::NeedModestSize() const {
    const zip_int64_t count = zip_get_num_entries(impl_->Archive, 0);
    if (count > kMaxEntries) throw UnreadableSheets("it is no workbook: it has too many parts");
    std::uint64_t size = 0;
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        const bool known =
            zip_stat_index(impl_->Archive, static_cast<zip_uint64_t>(i), 0, &stat) == 0 &&
            (stat.valid & ZIP_STAT_SIZE) != 0;
        if (!known || stat.size > kMaxUnpacked || (size += stat.size) > kMaxUnpacked)
            throw UnreadableSheets(
                fmt::format("it unpacks to more than {} MB", kMaxUnpacked / kMegabyte));
    }
}

bool ZipEntries::Has(const std::string& name) const {
    return zip_name_locate(impl_->Archive, name.c_str(), ZIP_FL_NOCASE) >= 0;
}

std::string ZipEntries::Read(const std::string& name) const {
    const zip_int64_t index = zip_name_locate(impl_->Archive, name.c_str(), ZIP_FL_NOCASE);
    if (index < 0) throw UnreadableSheets(fmt::format("its part {} is missing", name));
    zip_stat_t stat;
    zip_stat_index(impl_->Archive, static_cast<zip_uint64_t>(index), 0, &stat);
    const std::unique_ptr<zip_file_t, CloseEntry> file(
        zip_fopen_index(impl_->Archive, static_cast<zip_uint64_t>(index), 0));
    // One byte more than told: the end of a good entry is then read, and its checksum with it.
    std::string content(stat.size + 1, '\0');
    const zip_int64_t read =
        file == nullptr ? -1 : zip_fread(file.get(), content.data(), content.size());
    if (read < 0 || static_cast<std::uint64_t>(read) != stat.size)
        throw UnreadableSheets(fmt::format("its part {} is damaged", name));
    content.pop_back();
    return content;
}

}  // namespace zolmara
