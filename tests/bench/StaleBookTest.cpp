// What spreadsheets are held against: a workbook that holds an entry, but not what follows of it.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/StaleBook.h"
#include "core/Globals.h"
#include "spreadsheet/BookEvaluator.h"
#include "store/session/Session.h"
#include "support/Paths.h"
#include "support/TestCrf.h"
#include "worksheets/ExplainedStatements.h"

namespace zolmara {
namespace {

class StaleBook : public test::SessionTest {
protected:
    StaleBook() {
        test::MakeNorthfield(folder);
        crf = gCRFPath;
        DropCrf();
        made = bench::MakeStaleBook(crf, test::kCli, folder.Path().string());
    }

    std::string crf;
    bench::StaleBook made;
};

std::vector<double> Values(const bench::StaleBook& made,
                           const std::function<double(const bench::BookPlace&)>& value) {
    std::vector<double> values;
    for (const bench::BookFigure& figure : made.Figures) values.push_back(value(figure.Place));
    return values;
}

test::BookAddress AddressOf(const bench::BookPlace& place) { return {place.Row, place.Column}; }

TEST_F(StaleBook, IsCalculatedToTheFiguresOfTheProgram) {
    test::Book book(made.Path);
    const auto values = Values(made, [&](const bench::BookPlace& place) {
        return book.Value(place.Sheet, AddressOf(place)).Number;
    });
    EXPECT_NO_THROW(bench::CheckFigures(made, values));
}

TEST_F(StaleBook, HoldsResultsThatAreFoundWrong) {
    const test::Book book(made.Path);
    const auto values = Values(made, [&](const bench::BookPlace& place) {
        return book.Cells(place.Sheet).at(AddressOf(place)).Cached.Number;
    });
    EXPECT_THROW(bench::CheckFigures(made, values), std::runtime_error);
}

TEST_F(StaleBook, HoldsTheEntry) {
    const test::Book book(made.Path);
    OpenCrf(crf);
    const double before = NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;"));
    EXPECT_EQ(made.Keyed.Sheet, "A");
    EXPECT_EQ(book.Cells("A").at(AddressOf(made.Keyed)).Cached.Number, before + bench::kEntry);
}

TEST(BenchFigures, NameTheCellThatIsWrong) {
    bench::StaleBook book;
    book.Figures = {{{"A", 8, 2}, 100}, {{"G1", 9, 2}, 0.25}};
    EXPECT_NO_THROW(bench::CheckFigures(book, {100, 0.25}));
    try {
        bench::CheckFigures(book, {100, 0.5});
        FAIL() << "a wrong figure was taken";
    } catch (const std::runtime_error& wrong) {
        EXPECT_STREQ(wrong.what(), "G1!C9 is 0.5, not 0.25");
    }
    EXPECT_THROW(bench::CheckFigures(book, {100}), std::runtime_error);
}

}  // namespace
}  // namespace zolmara
