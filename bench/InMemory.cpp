#include "bench/InMemory.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/Dao.h"
#include "store/session/CoreTables.h"

namespace zolmara::bench {
namespace {

using Rows = std::vector<std::vector<double>>;

Rows LoadRows(Database& db, const std::string& sql) {
    Rows loaded;
    auto rows = db.OpenRecordset(sql, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        auto& row = loaded.emplace_back();
        for (int i = 3; i < rows.FieldCount(); ++i)
            if (IsCostCenterColumn(rows.FieldName(i))) row.push_back(NumOr(rows[i]));
    }
    return loaded;
}

void AddTo(std::vector<double>& totals, const std::vector<double>& row) {
    totals.resize(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) totals[i] += row[i];
}

double SumOfTotals(const Rows& rows) {
    std::vector<double> totals;
    double sum = 0;
    for (const auto& row : rows) AddTo(totals, row);
    for (const double total : totals) sum += total;
    return sum;
}

double Allocate(const std::vector<Matrices::Part>& parts, const std::vector<double>& cost) {
    std::vector<double> totals;
    for (const auto& part : parts)
        for (const auto& row : part.Statistics) AddTo(totals, row);
    std::vector<double> ucm(totals.size());
    for (std::size_t i = 0; i < totals.size(); ++i)
        ucm[i] = totals[i] == 0 ? 0 : RoundTo(cost[i] / totals[i], 6);
    double sum = 0;
    for (const auto& part : parts) {
        Rows amounts = part.Statistics;
        for (auto& row : amounts)
            for (std::size_t i = 0; i < row.size(); ++i)
                if (row[i] != 0) row[i] = RoundTo(ucm[i] * row[i], 0);
        // Three passes: the schedule's totals, F-1 and F-2.
        for (int pass = 0; pass < 3; ++pass) sum += SumOfTotals(amounts);
    }
    return sum;
}

double SumDirect(const std::vector<Matrices::Part>& parts) {
    double sum = 0;
    for (const auto& part : parts)
        for (int pass = 0; pass < 3; ++pass) sum += SumOfTotals(part.Direct);
    return sum;
}

}  // namespace

Matrices LoadMatrices(const std::string& path) {
    auto db = DBEngine::OpenDatabase(path);
    Matrices matrices;
    for (const int part : {1, 2, 3}) {
        const auto rowsOf = [&](const char* family) {
            return LoadRows(db, fmt::format("SELECT * FROM {}{} WHERE LineNum<51", family, part));
        };
        matrices.B.push_back({rowsOf("Bp"), rowsOf("C1p")});
        matrices.D.push_back({rowsOf("B1p"), rowsOf("D1p")});
    }
    matrices.CostC = LoadRows(db, "SELECT * FROM C1p3 WHERE LineNum=53").at(0);
    matrices.CostD = LoadRows(db, "SELECT * FROM D1p3 WHERE LineNum=53").at(0);
    return matrices;
}

double Calculate(const Matrices& matrices) {
    return SumDirect(matrices.B) + SumDirect(matrices.D) + Allocate(matrices.B, matrices.CostC) +
           Allocate(matrices.D, matrices.CostD);
}

}  // namespace zolmara::bench
