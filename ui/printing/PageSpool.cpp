#include "ui/printing/PageSpool.h"

#include <QDir>
#include <QTemporaryFile>
#include <stdexcept>

#include "ui/main/QtText.h"

namespace zolmara::ui {

struct PageSpool::Store {
    struct Place {
        qint64 Start = 0;
        int Bytes = 0;
        int Orientation = 1;
    };
    QTemporaryFile File{QDir::tempPath() + "/zolmara-print-XXXXXX"};
    std::vector<Place> Places;
    qint64 End = 0;
    std::size_t Reads = 0;

    [[noreturn]] void Fail() const {
        throw std::runtime_error("The printed pages cannot be kept: " + S(File.errorString()));
    }
};

PageSpool::PageSpool() : store_(std::make_shared<Store>()) {}

PageSpool::PageSpool(std::initializer_list<PrintedPage> pages) : PageSpool() {
    for (const PrintedPage& page : pages) Add(page);
}

void PageSpool::Add(const PrintedPage& page) {
    QTemporaryFile& file = store_->File;
    if (!file.isOpen() && !file.open()) store_->Fail();
    QByteArray bytes;
    for (const std::string& line : page.Lines)
        bytes.append(line.data(), static_cast<qsizetype>(line.size())).append('\n');
    const bool written =
        file.seek(store_->End) && file.write(bytes) == bytes.size() && file.flush();
    if (!written) store_->Fail();
    store_->Places.push_back({store_->End, static_cast<int>(bytes.size()), page.Orientation});
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
    if (!store_->File.seek(place.Start)) store_->Fail();
    const QByteArray bytes = store_->File.read(place.Bytes);
    if (bytes.size() != place.Bytes) store_->Fail();
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', start);
        page.Lines.emplace_back(bytes.data() + start, static_cast<std::size_t>(end - start));
        start = end + 1;
    }
    return page;
}

}  // namespace zolmara::ui
