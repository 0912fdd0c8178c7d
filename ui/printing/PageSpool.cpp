#include "ui/printing/PageSpool.h"

#include <fmt/format.h>

#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>

#include "store/PlainWords.h"
#include "store/base/StoreError.h"
#include "store/files/UnnamedFile.h"

namespace zolmara::ui {

struct PageSpool::Store {
    struct Place {
        std::uint64_t Start = 0;
        std::size_t Bytes = 0;
        int Orientation = 1;
    };
    std::optional<UnnamedFile> File;
    std::vector<Place> Places;
    std::uint64_t End = 0;
    std::size_t Reads = 0;

    [[noreturn]] static void Fail(const std::string& why) {
        throw std::runtime_error("The printed pages cannot be kept: " + why);
    }
    UnnamedFile& Opened() {
        try {
            if (!File) File.emplace();
        } catch (const StoreError& error) {
            Fail(PlainWords(error));
        }
        return *File;
    }
};

PageSpool::PageSpool() : store_(std::make_shared<Store>()) {}

PageSpool::PageSpool(std::initializer_list<PrintedPage> pages) : PageSpool() {
    for (const PrintedPage& page : pages) Add(page);
}

void PageSpool::Add(const PrintedPage& page) {
    UnnamedFile& file = store_->Opened();
    std::string bytes;
    for (const std::string& line : page.Lines) (bytes += line) += '\n';
    const std::error_code error = file.Write(store_->End, std::as_bytes(std::span(bytes)));
    if (error) Store::Fail(fmt::format("{}: {}", file.Folder(), error.message()));
    store_->Places.push_back({store_->End, bytes.size(), page.Orientation});
    store_->End += bytes.size();
}

std::size_t PageSpool::Size() const { return store_->Places.size(); }
std::size_t PageSpool::Reads() const { return store_->Reads; }

int PageSpool::OrientationOf(std::size_t number) const {
    return store_->Places.at(number).Orientation;
}

PrintedPage PageSpool::At(std::size_t number) const {
    const Store::Place& place = store_->Places.at(number);
    PrintedPage page{place.Orientation, {}};
    ++store_->Reads;
    std::string bytes(place.Bytes, ' ');
    store_->Opened().Read(place.Start, std::as_writable_bytes(std::span(bytes)));
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        page.Lines.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return page;
}

}  // namespace zolmara::ui
