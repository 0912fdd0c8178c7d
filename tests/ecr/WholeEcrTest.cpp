// One home office, whose statement and electronic report were worked out by hand, record by record.

#include <gtest/gtest.h>

#include "calc/Calc_All.h"
#include "ecr/Certification.h"
#include "ecr/EcrSupport.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

class WholeEcr : public EcrCrf {
protected:
    WholeEcr() {
        host.Folder = folder.Path();
        host.Clock = DateTime(2024, 3, 15, 14, 5, 42);
        AddHospitals();
        KeyEntries();
        Calc_All();
    }

private:
    static void AddHospitals() {
        AddRow("S2p1", 1,
               {{"Col_1", "Hill Hospital"},
                {"Col_2", "14-0001"},
                {"Col_3", "Owned"},
                {"Col_4", "10/1/2022"},
                {"Col_5", "9/30/2023"}});
        AddRow("S2p1", 2, {{"Col_1", "Dale Clinic"}, {"Col_2", "14-0002"}});
        for (const Worksheet& sheet : AllWorksheets())
            if (sheet.CostCenterCells || sheet.Item.starts_with("F")) BuildWorksheet(sheet.Item);
    }

    /// 1,000 of costs: 50 of legal fees are an officer's salary, 20 are not allowable; 30 of the
    /// salary go to Hill directly, 40 of the building by three rooms to one, and the rest by
    /// three beds to one.
    static void KeyEntries() {
        SetCell("A", 1, "Col_1", 100);
        SetCell("A", 8, "Col_1", 600);
        SetCell("A", 14, "Col_1", 300);
        AddRow("A6", 1,
               {{"Col_1", "Move fees"},
                {"Col_2", "A"},
                {"Col_3", "Salaries of Officers"},
                {"Col_4", 8},
                {"Col_5", 50},
                {"Col_6", "Legal Fees"},
                {"Col_7", 14},
                {"Col_8", 50}});
        SetCell("A8", 1, "Col_2", "B");
        SetCell("A8", 1, "Col_3", -20);
        SetCell("A8", 1, "Col_5", 14);
        SetCell("B1p1", 1, "CC_800", 30);
        SetCell("C1p1", 1, "CC_100", 3);
        SetCell("C1p1", 2, "CC_100", 1);
        SetCell("C1p3", 53, "CC_100", 40);
        SetCell("E1p1", 1, "Col_1", 300);
        SetCell("E1p1", 2, "Col_1", 100);
        SetCell("G", 1, "Col_1", 70);
        SetCell("G", 33, "Col_1", 20);
        SetCell("G", 47, "Col_1", 50);
        SetCell("G1", 1, "Col_2", 2000);
        SetCell("S1p2", 2, "Col_2", "Ann Lee");
        SetCell("Sp1", 2, "Col_1", "1");
    }
};

const Lines& WorkedOut() {
    static const Lines lines = {
        "1           1   12345620222742023273HB02P00320240752023365",
        "1           2       287-22",
        "1           4       14:05",
        "2A000000    1           CRC-B&F                             ",
        "2A000000    2           CRC-ME                              ",
        "2A000000    4           INSURANCE PREMIUMS-OTHER CRC        ",
        "2A000000    5           TAXES & LICENSES-OTHER CRC          ",
        "2A000000    6           ALL OTHER CAPITAL RELATED COSTS     ",
        "2A000000    8           SALARIES OF OFFICERS                ",
        "2A000000    9           SALARIES AND WAGES OF OTHERS        ",
        "2A000000   10           PAYROLL TAXES                       ",
        "2A000000   11           EMPLOYEE BENEFITS-PAYROLL RELATED   ",
        "2A000000   12           EMPLOYEE BENEFITS-NON-PAYROLL REL   ",
        "2A000000   13           PROFIT SHARING/PENSION PLANS        ",
        "2A000000   14           LEGAL FEES                          ",
        "2A000000   15           AUDITING AND ACCOUNTING FEES        ",
        "2A000000   16           UTILITIES                           ",
        "2A000000   17           COMMUNICATIONS                      ",
        "2A000000   18           TRAVEL AND ENTERTAINMENT            ",
        "2A000000   19           TRANSPORTATION                      ",
        "2A000000   20           CLEANING, OFFICE & ADMIN SUPPLIES   ",
        "2A000000   21           MINOR EQUIPMENT                     ",
        "2A000000   22           REPAIRS AND MAINTENANCE             ",
        "2A000000   23           DUES AND SUBSCRIPTIONS              ",
        "2A000000   24           CONTRIBUTIONS                       ",
        "2A000000   25           INSURANCE PREMIUMS-NON-CAPITAL      ",
        "2A000000   26           TAXES & LICENSES-NON-CAPITAL        ",
        "2A000000   27           INTEREST EXPENSE                    ",
        "2A000000   28           INTEREST INCOME                     ",
        "2C100000    4    1  SQUARE    ",
        "2C100000    5    1  FEET      ",
        "2C100000    6    1  1",
        "2C100000    4    2  DOLLAR    ",
        "2C100000    5    2  VALUE     ",
        "2C100000    6    2  2",
        "2E000000    4    1  TOTAL     ",
        "2E000000    5    1  COSTS     ",
        "2E000000    6    1  1         ",
        "2E100001    4    1  TOTAL     ",
        "2E100001    5    1  COSTS     ",
        "2E100001    6    1  1         ",
        "2E100002    4    1  TOTAL     ",
        "2E100002    5    1  COSTS     ",
        "2E100002    6    1  1         ",
        "2E100003    4    1  TOTAL     ",
        "2E100003    5    1  COSTS     ",
        "2E100003    6    1  1         ",
        "3A000000    1    1               100",
        "3A000000    1    3               100",
        "3A000000    1    5               100",
        "3A000000    1    7                40",
        "3A000000    1    8                60",
        "3A000000    3    1               100",
        "3A000000    3    3               100",
        "3A000000    3    5               100",
        "3A000000    3    7                40",
        "3A000000    3    8                60",
        "3A000000    8    1               600",
        "3A000000    8    2                50",
        "3A000000    8    3               650",
        "3A000000    8    5               650",
        "3A000000    8    6                30",
        "3A000000    8    8               620",
        "3A000000   14    1               300",
        "3A000000   14    2               -50",
        "3A000000   14    3               250",
        "3A000000   14    4               -20",
        "3A000000   14    5               230",
        "3A000000   14    8               230",
        "3A000000   99    1               900",
        "3A000000   99    3               900",
        "3A000000   99    4               -20",
        "3A000000   99    5               880",
        "3A000000   99    6                30",
        "3A000000   99    8               850",
        "3A000000  100    1              1000",
        "3A000000  100    3              1000",
        "3A000000  100    4               -20",
        "3A000000  100    5               980",
        "3A000000  100    6                30",
        "3A000000  100    7                40",
        "3A000000  100    8               910",
        "3A600000    1    1  MOVE FEES                           ",
        "3A600000    1    2  A ",
        "3A600000    1    3  SALARIES OF OFFICERS                ",
        "3A600000    1    4              8.00",
        "3A600000    1    5                50",
        "3A600000    1    6  LEGAL FEES                          ",
        "3A600000    1    7             14.00",
        "3A600000    1    8                50",
        "3A6000A0  100    5                50",
        "3A6000A0  100    8                50",
        "3A600000  100    5                50",
        "3A600000  100    8                50",
        "3A800000    1    2  B",
        "3A800000    1    3               -20",
        "3A800000    1    4  LEGAL FEES                          ",
        "3A800000    1    5             14.00",
        "3A800000  100    3               -20",
        "3B100001    1    8                30",
        "3B100001    1   99                30",
        "3B100001   51    8                30",
        "3B100001   51   99                30",
        "3B100003   52    8                30",
        "3B100003   52   99                30",
        "3C100001    1    1                 3",
        "3C100001    2    1                 1",
        "3C100001   51    1                 4",
        "3C100003   52    1                 4",
        "3C100003   53    1                40",
        "3C100003   54    1         10.000000",
        "3C000001    1    1                30",
        "3C000001    1    3                30",
        "3C000001    2    1                10",
        "3C000001    2    3                10",
        "3C000001   51    1                40",
        "3C000001   51    3                40",
        "3C000003   52    1                40",
        "3C000003   52    3                40",
        "3E000000    1    1               400",
        "3E000000    1    2          1.000000",
        "3E000000    1    3                60",
        "3E000000    1    5               620",
        "3E000000    1    7               230",
        "3E000000    4    1               400",
        "3E000000    4    2          1.000000",
        "3E000000    4    3                60",
        "3E000000    4    5               620",
        "3E000000    4    7               230",
        "3E100001    1    1               300",
        "3E100001    1    2          0.750000",
        "3E100001    1    3                45",
        "3E100001    1    5               465",
        "3E100001    1    7               172",
        "3E100001    2    1               100",
        "3E100001    2    2          0.250000",
        "3E100001    2    3                15",
        "3E100001    2    5               155",
        "3E100001    2    7                58",
        "3E100001   51    1               400",
        "3E100001   51    2          1.000000",
        "3E100001   51    3                60",
        "3E100001   51    5               620",
        "3E100001   51    7               230",
        "3E100002   51    2          1.000000",
        "3E100003   51    2          1.000000",
        "3E100003   52    3                60",
        "3E100003   52    5               620",
        "3E100003   52    7               230",
        "3F100001    1    1                30",
        "3F100001    1    3               465",
        "3F100001    1    4               495",
        "3F100001    1    7               172",
        "3F100001    1    8               172",
        "3F100001    1    9               667",
        "3F100001    2    3               155",
        "3F100001    2    4               155",
        "3F100001    2    7                58",
        "3F100001    2    8                58",
        "3F100001    2    9               213",
        "3F100001   51    1                30",
        "3F100001   51    3               620",
        "3F100001   51    4               650",
        "3F100001   51    7               230",
        "3F100001   51    8               230",
        "3F100001   51    9               880",
        "3F100003   52    1                30",
        "3F100003   52    3               620",
        "3F100003   52    4               650",
        "3F100003   52    7               230",
        "3F100003   52    8               230",
        "3F100003   52    9               880",
        "3F000001    1    2                30",
        "3F000001    1    3                45",
        "3F000001    1    4                75",
        "3F000001    2    2                10",
        "3F000001    2    3                15",
        "3F000001    2    4                25",
        "3F000001   51    2                40",
        "3F000001   51    3                60",
        "3F000001   51    4               100",
        "3F000003   52    2                40",
        "3F000003   52    3                60",
        "3F000003   52    4               100",
        "3G000000    1    1                70",
        "3G000000   10    1                70",
        "3G000000   32    1                70",
        "3G000000   33    1                20",
        "3G000000   40    1                20",
        "3G000000   46    1                20",
        "3G000000   47    1                50",
        "3G000000   48    1                70",
        "3G100000    1    2              2000",
        "3G100000    2    2              1000",
        "3G100000    3    2              1000",
        "3G100000   22    2              1000",
        "3S100001    2    1  SAMPLE HOME OFFICE                  ",
        "3S100001    2    2  123456",
        "3S100001    2    4  10/01/2022",
        "3S100001    2    5  09/30/2023",
        "3S100002    2    2  ANN LEE                             ",
        "3S200001    1    1  HILL HOSPITAL                       ",
        "3S200001    1    2  140001",
        "3S200001    1    3  O",
        "3S200001    1    4  10/01/2022",
        "3S200001    1    5  09/30/2023",
        "3S200001    2    1  DALE CLINIC                         ",
        "3S200001    2    2  140002",
        "3S000001    1    1  Y",
        "3S000001    2    1  1",
        "3S000002    1    1  Ann Lee                             ",
        "3S000002    1    2  Y",
        "3S000002    2    1  Ann Lee                             ",
        "3S000002    3    1  Chief Financial Officer             ",
        "3S000002    4    1  03/15/2024",
    };
    return lines;
}

TEST_F(WholeEcr, IsAsItWasWorkedOut) {
    const std::string path = folder.File("HO123456.23A1");
    host.Files = {path};
    AcceptCertification("Ann", "Lee", "Chief Financial Officer");
    Lines written = LinesOf(path);
    ASSERT_FALSE(written.empty());
    EXPECT_TRUE(written.back().starts_with("4LOCALSEAL-1:")) << written.back();
    written.pop_back();
    for (std::size_t i = 0; i < std::min(written.size(), WorkedOut().size()); ++i)
        ASSERT_EQ(written[i], WorkedOut()[i]) << "record " << i + 1;
    EXPECT_EQ(written.size(), WorkedOut().size());
}

}  // namespace
}  // namespace zolmara::test
