#pragma once

// The allocation schedules B to F, as they are made, calculated and checked.

#include "store/Statements.h"

namespace zolmara::test {

inline std::vector<StatementGroup> ScheduleTables() {
    const std::vector<std::string> allocated{"Bp1", "Bp2", "Bp3", "B1p1", "B1p2", "B1p3",
                                             "Cp1", "Cp2", "Cp3", "C1p1", "C1p2", "C1p3",
                                             "Dp1", "Dp2", "Dp3", "D1p1", "D1p2", "D1p3"};
    const std::vector<std::string> pooled{"E1p1", "E1p2", "E1p3", "Fp1",  "Fp2",  "Fp3",
                                          "F1p1", "F1p2", "F1p3", "F2p1", "F2p2", "F2p3"};
    auto items = allocated;
    items.insert(items.end(), pooled.begin(), pooled.end());
    return {
        {"Schedule",
         {Gives("Select * From {T} Order By LineNum;", 1),
          Gives("SELECT * From {T} ORDER BY LineNum;", 1),
          Gives("SELECT * FROM {T} WHERE LineNum<51 ORDER BY LineNum;", 1),
          Gives("Select * From {T} Where LineNum<51;", 1),
          Gives("Select * From {T} Where LineNum=51;", 51),
          Rows("Select * From {T} Where LineNum=999;", 0),
          Gives("SELECT * FROM {T} WHERE LineNum<51 or LineNum=53 ORDER BY LineNum;", 1),
          Run("Select * From {T};"), Rows("Select * From {T} Where LineNum = 0;", 0),
          Finds("Select * From {T} Order By LineNum;", "LineNum=51", 51), Remakes("{T}"),
          Leaves("INSERT INTO {T} SELECT LineNum, Col_1 As Description, Col_2 As Col_0 FROM "
                 "S2p{P} WHERE LineNum<51;",
                 "SELECT Count(Description) FROM {T} WHERE LineNum=1", 1),
          Run("Insert Into {T} (LineNum,Description) Values(51,'Total');"),
          Run("Insert Into {T} (LineNum,Description) Values(52,'Grand Total');"),
          Run("Insert Into {T} (LineNum,Description) Values(53,'Cost to be allocated');"),
          Leaves("Insert Into {T} (LineNum,Description) Values(54,'UCM');",
                 "SELECT Description FROM {T} WHERE LineNum=54", "UCM"),
          Run("CREATE UNIQUE INDEX ndx{T} ON {T} (LineNum);"),
          Refused("Insert Into {T} (LineNum,Description) Values(54,'UCM');")},
         items},
        {"E",
         {Rows("Select * From E Order by LineNum;", 4),
          Gives("Select * From E Where LineNum=4;", 4),
          Gives("SELECT * FROM E ORDER BY LineNum;", 1), Remakes("E"),
          Run("INSERT INTO E (LineNum,Description) Values(1,'Healthcare Provider Components');"),
          Run("INSERT INTO E (LineNum,Description) Values(2,'Non-Healthcare Components');"),
          Run("INSERT INTO E (LineNum,Description) Values(3,'Region / Division Components');"),
          Leaves("Insert Into E (LineNum,Description) Values(4,'Total');",
                 "SELECT Count(*) FROM E WHERE Col_1 Is Null", 4),
          Run("CREATE UNIQUE INDEX ndxE ON E (LineNum);")}},
        // The checks look for amounts below zero and for missing references, and give keys that
        // lack an index one.
        {"Checks",
         {Rows("SELECT * FROM A WHERE LineNum>=0 and LineNum<=99 ORDER BY LineNum;", 30),
          Rows("SELECT * FROM A6 WHERE Col_4>=0 and Col_4<=99 ORDER BY Col_4;", 2),
          Gives("SELECT * FROM A6 WHERE Col_7>=0 and Col_7<=99 ORDER BY Col_7;", 2),
          Rows("SELECT * FROM A8 WHERE Col_5>=0 and Col_5<=99 ORDER BY Col_5;", 1),
          Rows("SELECT * FROM A81p1 WHERE Col_1>=0 and Col_1<=99 ORDER BY Col_1;", 1),
          Run("CREATE INDEX ndxES ON ES (LineNum);"), Rows("Select * From A8 Where Col_3<0;", 2),
          Rows("Select * From Bp1 Where CC_100<0;", 0),
          Gives("Select * From C1p3 Where LineNum=53;", 53),
          Gives("Select * From D1p3 Where LineNum=53;", 53),
          Rows("Select * From D1p1 Where LineNum<51 Order by LineNum;", 2),
          Rows("Select * From B1p3 Where LineNum<51 Order by LineNum;", 1)}},
    };
}

inline std::vector<StatementGroup> ScheduleCalculations() {
    return {
        {"UnitCost",
         {Gives("Select * From {L}1p3 Where LineNum=54;", 54),
          Rows("Select * From {L}1p1 Where LineNum<51;", 2),
          Rows("Select * From {L}1p2 Where LineNum<51;", 1),
          Gives("Select * From {L}p1 Where LineNum=51;", 51),
          Gives("Select * From {L}p2 Where LineNum=51;", 51),
          Gives("Select * From {L}1p3 Where LineNum=53;", 53),
          Gives("Select * From {L}p3 Where LineNum=52;", 52)},
         {"C", "D"}},
        {"Residual",
         {// Statistics 10 and 20 at a unit cost of 10.
          Gives("Select Top 1 * From Cp1 Where LineNum<51 Order By abs(CC_100) Desc;", 2),
          Gives("SELECT CC_100 FROM Cp1 WHERE LineNum=2;", 200),
          Gives("Select Top 1 * From Cp2 Where LineNum<51 Order By abs(CC_100) Desc;", 1),
          Gives("Select Top 1 * From Cp3 Where LineNum<51 Order By abs(CC_100) Desc;", 1),
          Gives("Select * From Cp1 Where LineNum=2;", 2),
          Leaves("Update Cp1 Set CC_100=201,Col_3=201 Where LineNum=2;",
                 "SELECT CC_100+Col_3 FROM Cp1 WHERE LineNum=2", 402),
          Leaves("Update Cp1 Set CC_100=301,Col_3=301 Where LineNum=51;",
                 "SELECT Col_3 FROM Cp1 WHERE LineNum=51", 301),
          Leaves("Update Cp3 Set CC_100=300,Col_3=300 Where LineNum=52;",
                 "SELECT Col_3 FROM Cp3 WHERE LineNum=52", 300),
          // One unit each on part 1 and part 3: 350 of the 700.
          Gives("Select Top 1 * From Dp1 Where LineNum<51 Order By abs(CC_900) Desc;", 1),
          Gives("SELECT CC_900 FROM Dp3 WHERE LineNum=1;", 350),
          Leaves("Update Dp3 Set CC_900=349,Col_99=349 Where LineNum=1;",
                 "SELECT Col_99 FROM Dp3 WHERE LineNum=1", 349)}},
        {"PooledParts",
         {Gives("Select Sum(Col_1) As C1 From E1p1 Where LineNum<51;", 80),
          Gives("Select Sum(Col_1) As C1 From E1p2 Where LineNum<51;", 20),
          Gives("Select Sum(Col_1) As C1 From E1p3 Where LineNum<51;", {}),
          Leaves("Update E1p3 Set Col_1=0 Where LineNum=51;",
                 "SELECT Col_1 FROM E1p3 WHERE LineNum=51", 0),
          Leaves("Update E Set Col_1=20,Col_2=0.2 Where LineNum=2;",
                 "SELECT Col_2 FROM E WHERE LineNum=2", 0.2),
          Leaves("Update E Set Col_1=100,Col_2=1 Where LineNum=4;",
                 "SELECT Col_1 FROM E WHERE LineNum=4", 100),
          Gives("Select Sum(Col_2) As C2 From E Where LineNum<4;", 1),
          Gives("Select Top 1 LineNum,Col_1,Col_2 From E Where LineNum<4 Order By abs(Col_1) "
                "Desc;",
                1),
          Leaves("Update E Set Col_2=0.800001 Where LineNum=1;",
                 "SELECT Col_2 FROM E WHERE LineNum=1", 0.800001),
          Finds("Select * From A Order by LineNum;", "LineNum=9", 9),
          Leaves("Update E Set CC_100=500 Where LineNum=4;", "SELECT CC_100 FROM E WHERE LineNum=4",
                 500),
          Leaves("Update E1p1 Set CC_100=400 Where LineNum=51;",
                 "SELECT CC_100 FROM E1p1 WHERE LineNum=51", 400),
          // Line 10 after its adjustment of -40.
          Gives("Select Sum(Col_8) As C8 From A Where (LineNum>=10 And LineNum<28) Or "
                "(LineNum>=29 And LineNum<99);",
                60),
          Run("Update E Set Col_7=48 Where LineNum=1;"),
          Run("Update E1p1 Set Col_7=48 Where LineNum=51;"),
          Gives("Select Sum(Col_2) As C2 From E1p1 Where LineNum<51;", 1),
          Gives("Select Top 1 LineNum,Col_1,Col_2 From E1p1 Where LineNum<51 Order By Col_1 "
                "Desc;",
                1),
          Run("Update E1p1 Set Col_2=1 Where LineNum=51;"),
          // 400 of line 1 in the ratio 60 to 20.
          Gives("Select Sum(CC_100) As Tot From E1p1 Where LineNum<51;", 400),
          Gives("Select Top 1 * From E1p1 Where LineNum<51 Order By Abs(CC_100) Desc;", 1),
          Leaves("Update E1p1 Set CC_100=299 Where LineNum=1;",
                 "SELECT CC_100 FROM E1p1 WHERE LineNum=1", 299),
          Gives("Select * From E1p1 Where LineNum=51", 51),
          Gives("Select * From E1p2 Where LineNum=51", 51),
          Gives("Select * From E1p3 Where LineNum=51", 51),
          Leaves("Update E1p3 Set CC_100=500 Where LineNum=52;",
                 "SELECT CC_100 FROM E1p3 WHERE LineNum=52", 500),
          Gives("Select * From E1p3 Where LineNum=52;", 52)}},
        {"Summary",
         {Run("UPDATE Fp{T} INNER JOIN Bp{T} ON Fp{T}.LineNum = Bp{T}.LineNum SET Fp{T}.Col_1 = "
              "[Bp{T}].[Col_7];"),
          Run("UPDATE Fp{T} INNER JOIN Cp{T} ON Fp{T}.LineNum = Cp{T}.LineNum SET Fp{T}.Col_2 = "
              "[Cp{T}].[Col_3];"),
          Run("Select * From E1p{T} Order By LineNum;"),
          Leaves("Update Fp{T} Set Col_3=7 Where LineNum=1;",
                 "SELECT Col_3 FROM Fp{T} WHERE LineNum=1", 7),
          Leaves("UPDATE Fp{T} SET "
                 "Col_4=IIf(IsNull([Col_1]),0,[Col_1])+IIf(IsNull([Col_2]),0,[Col_2])+IIf(IsNull(["
                 "Col_3]),0,[Col_3]) Where LineNum=1;",
                 "SELECT IIf(IsNull(Col_1),0,Col_1)+IIf(IsNull(Col_2),0,Col_2)-Col_4 FROM Fp{T} "
                 "WHERE LineNum=1",
                 -7),
          Run("Select * From B1p{T} Order By LineNum;"),
          Run("Update F1p{T} Set Col_1=5,Col_5=6 Where LineNum=1;"),
          Run("Select * From Dp{T} Order By LineNum;"),
          Run("Update F1p{T} Set Col_2=3,Col_6=4 Where LineNum=1;"),
          // The right sides read the row as it was: 5+3+1, 6+4+2, 5+3+3+6+4.
          Leaves("Update F1p{T} Set "
                 "Col_3=1,Col_4=Col_1+Col_2+1,Col_7=2,Col_8=Col_5+Col_6+2,Col_9=Col_1+Col_2+3+"
                 "Col_5+Col_6 Where LineNum=1;",
                 "SELECT Col_4*10000+Col_8*100+Col_9 FROM F1p{T} WHERE LineNum=1", 91221),
          Run("Update F2p{T} Set Col_1=-50 Where LineNum=1;"),
          Run("Update F2p{T} Set Col_2=20 Where LineNum=1;"),
          Leaves("Update F2p{T} Set Col_3=1,Col_4=Col_1+Col_2+1 Where LineNum=1;",
                 "SELECT Col_4 FROM F2p{T} WHERE LineNum=1", -29)},
         {"1", "2", "3"}},
        {"SummaryTotals",
         {Leaves("UPDATE Fp1 INNER JOIN Bp1 ON Fp1.LineNum = Bp1.LineNum SET Fp1.Col_1 = "
                 "[Bp1].[Col_7];",
                 "SELECT Col_1 FROM Fp1 WHERE LineNum=1", 200),
          Leaves("UPDATE Fp1 INNER JOIN Cp1 ON Fp1.LineNum = Cp1.LineNum SET Fp1.Col_2 = "
                 "[Cp1].[Col_3];",
                 "SELECT Col_2 FROM Fp1 WHERE LineNum=2", 200),
          Gives("SELECT [Fp1].[Col_1]+[Fp2].[Col_1]+[Fp3].[Col_1] AS "
                "C1,[Fp1].[Col_2]+[Fp2].[Col_2]+[Fp3].[Col_2] AS "
                "C2,[Fp1].[Col_3]+[Fp2].[Col_3]+[Fp3].[Col_3] AS "
                "C3,[Fp1].[Col_4]+[Fp2].[Col_4]+[Fp3].[Col_4] AS C4 FROM (Fp1 INNER JOIN Fp2 ON "
                "Fp1.LineNum = Fp2.LineNum) INNER JOIN Fp3 ON Fp1.LineNum = Fp3.LineNum WHERE "
                "(((Fp1.LineNum)=51));",
                200),
          Leaves("Update Fp3 Set Col_1=200,Col_2=300,Col_3=2500,Col_4=3000 Where LineNum=52;",
                 "SELECT Col_4 FROM Fp3 WHERE LineNum=52", 3000)}},
    };
}

}  // namespace zolmara::test
