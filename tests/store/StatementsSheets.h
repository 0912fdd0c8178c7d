#pragma once

// The worksheets of the trial balance: A, A-6, A-7, A-8 and A-8-1.

#include "store/Statements.h"

namespace zolmara::test {

inline std::vector<StatementGroup> TrialBalanceStatements() {
    const std::string eight =
        "Select Sum(Col_1) As C1, Sum(Col_2) As C2,Sum(Col_3) As C3, Sum(Col_4) As C4,Sum(Col_5) "
        "As C5, Sum(Col_6) As C6,Sum(Col_7) As C7, Sum(Col_8) As C8 From A ";
    return {
        {"A",
         {Rows("Select * From A Where LineNum Not In(3,7,28,99,100) Order by LineNum;", 26),
          Rows("SELECT * From A ORDER BY LineNum;", 31),
          Finds("SELECT * FROM A Order By LineNum", "LineNum = 4.01", 4.01),
          Finds("SELECT * FROM A Order By LineNum", "LineNum = 98", {}),
          Leaves("UPDATE A SET Col_2=0, Col_4=0;", "SELECT Sum(Abs(Col_2)+Abs(Col_4)) FROM A", 0),
          Rows("SELECT * FROM A6 WHERE Col_5 > 0 AND LineNum < 100;", 2),
          Rows("SELECT * FROM A6 WHERE Col_7 > 0 AND LineNum < 100;", 2),
          Rows("SELECT * FROM A8 WHERE Col_3<>0 And Col_5 is not null;", 1),
          Rows("SELECT * FROM A81p1 WHERE Col_1 > 0 AND Col_1 < 100;", 1),
          Leaves("UPDATE A SET Col_3=IIF(IsNull(Col_1),0,Col_1)+IIF(IsNull(Col_2),0,Col_2);",
                 "SELECT Col_3 FROM A WHERE LineNum=8", 5000),
          Leaves("UPDATE A SET Col_5=IIF(IsNull(Col_3),0,Col_3)+IIF(IsNull(Col_4),0,Col_4);",
                 "SELECT Col_5 FROM A WHERE LineNum=28", 0),
          Gives("SELECT * FROM Bp3 WHERE LineNum=52;", 52),
          Gives("SELECT * FROM B1p3 WHERE LineNum=52;", 52),
          Gives("SELECT * FROM Cp3 WHERE LineNum=52;", 52),
          Gives("SELECT * FROM Dp3 WHERE LineNum=52;", 52),
          Leaves("Update A Set Col_6=12.5 Where LineNum=4.01;",
                 "SELECT Col_6 FROM A WHERE LineNum=4.01", 12.5),
          Leaves("Update A Set Col_7=-3 Where LineNum=8;", "SELECT Col_7 FROM A WHERE LineNum=8",
                 -3),
          Leaves("UPDATE A SET "
                 "Col_8=IIF(IsNull(Col_5),0,Col_5)-IIF(IsNull(Col_6),0,Col_6)-IIF(IsNull(Col_7),0,"
                 "Col_7);",
                 "SELECT Col_8 FROM A WHERE LineNum=8", 5000 - 500 + 3),
          Gives(eight + "Where LineNum<3;", 3000),
          Leaves("Update A Set Col_1=3000,Col_2=0,Col_3=3000,Col_4=0,Col_5=3000,Col_6=200,"
                 "Col_7=300,Col_8=2500 Where LineNum=3;",
                 "SELECT Col_8 FROM A WHERE LineNum=3", 2500),
          Gives("Select Sum(Col_1) As C1, Sum(Col_2) As C2,Sum(Col_3) As C3,Sum(Col_5) As C5, "
                "Sum(Col_6) As C6 From A Where LineNum>3 And LineNum<7;",
                330),
          Run("Update A Set Col_1=330,Col_2=0,Col_3=330,Col_5=330,Col_6=12.5 Where LineNum=7;"),
          Gives(eight + "Where LineNum>7 And LineNum<99;", 12100),
          Run("Update A Set Col_1=12100,Col_2=0,Col_3=12100,Col_4=0,Col_5=12100,Col_6=500,"
              "Col_7=-3,Col_8=11603 Where LineNum=99;"),
          Leaves("UPDATE A SET Col_4=0,Col_7=0,Col_8=0 Where LineNum>3 and LineNum<8;",
                 "SELECT Sum(Col_8) FROM A WHERE LineNum In(4,4.01,5,6,7)", 0),
          Gives(eight + "Where LineNum In(3,7,99);", 15430),
          Leaves("Update A Set Col_1=15430,Col_2=0,Col_3=15430,Col_4=0,Col_5=15430,Col_6=712.5,"
                 "Col_7=297,Col_8=14103 Where LineNum=100;",
                 "SELECT Col_6 FROM A WHERE LineNum=100", 712.5),
          Rows("Select * From A Order by LineNum;", 31),
          Rows("Select * From A;", 31),
          Gives("Select * From A Where LineNum=100;", 100),
          Rows("Select * From A Where LineNum<99 Order by LineNum;", 29),
          Rows("Select * From A Where LineNum<99;", 29),
          Rows("Select * From A Where LineNum<4;", 3),
          Rows("Select * From A Where LineNum<3;", 2),
          Rows("Select * From A Where LineNum In(4,5,6) Order By LineNum;", 3),
          Run("Select Sum(Col_8) As S8 From A Where LineNum In(8,9,28);"),
          Gives("Select Sum(Col_1) As C8 From A Where (LineNum>=10 And LineNum<28) Or "
                "(LineNum>=29 And LineNum<99);",
                100),
          Run("Select Sum(Col_8) As C8 From A Where (LineNum>=10 And LineNum<28) Or "
              "(LineNum>=29 And LineNum<99);"),
          Remakes("A"),
          Run("CREATE UNIQUE INDEX ndxA ON A (LineNum);"),
          Leaves("INSERT INTO A SELECT LineNum,CCName FROM CostCenters;",
                 "SELECT Count(*) FROM A WHERE Col_1 Is Null", 27),
          Run("INSERT INTO A (LineNum,CCName) VALUES (3,'Subtotal CRC');"),
          Run("INSERT INTO A (LineNum,CCName) VALUES (7,'Subtotal Other CRC');"),
          Run("INSERT INTO A (LineNum,CCName) VALUES (99,'Subtotal Non-Capital Cost');"),
          Leaves("INSERT INTO A (LineNum,CCName) VALUES (100,'Total');",
                 R"(SELECT Count(*) FROM A WHERE Left(CCName,8)="Subtotal")", 3),
          Refused("Insert Into A (LineNum) Values(4.01);")}},
        {"A6",
         {Rows("SELECT * FROM A6 WHERE LineNum < 100 ORDER BY LineNum;", 2),
          Rows("SELECT * FROM A6 ORDER BY LineNum;", 3),
          Gives("Select * From A6 Where LineNum=100;", 100),
          Rows("Select * From A6 Where LineNum<99 Order By LineNum;", 2),
          Finds("SELECT * FROM A6 ORDER BY LineNum;", "LineNum<=2", 1),
          Gives(
              R"(SELECT Count(Len([Col_1])) AS Cnt From A6 Where LineNum < 2 And Col_2 = "A" And Len([Col_1])>0;)",
              1),
          Gives(
              R"(SELECT Count(Len([Col_1])) AS Cnt From A6 Where LineNum < 2 And Col_2 = "B" And Len([Col_1])>0;)",
              0),
          Leaves("Insert Into A6 (LineNum, Col_4, Col_5, Col_7, Col_8) Values (3, 0, 0, 0, 0);",
                 "SELECT Col_8 FROM A6 WHERE LineNum=3", 0),
          Leaves("UPDATE A6 SET Col_3 = Null, Col_5 = Null WHERE LineNum<100 AND (Col_4 Is Null "
                 "Or Col_4<=0);",
                 "SELECT Count(Col_5) FROM A6 WHERE LineNum<100", 2),
          Leaves("UPDATE A6 SET Col_6 = Null, Col_8 = Null WHERE LineNum<100 AND (Col_7 Is Null "
                 "Or Col_7<=0);",
                 "SELECT Count(Col_8) FROM A6 WHERE LineNum<100", 2),
          Gives("SELECT SUM(Col_5) as TotAmt1, SUM(Col_8) as TotAmt2 FROM A6 WHERE LineNum < 100;",
                125),
          Leaves("Update A6 Set Col_5=126.5,Col_8=125 Where LineNum=100;",
                 "SELECT Col_5-Col_8 FROM A6 WHERE LineNum=100", 1.5),
          Leaves("UPDATE A6 SET Col_3 = Null, Col_5 = Null WHERE Col_4=0 Or Col_4 Is Null And "
                 "LineNum < 100;",
                 "SELECT Count(Col_5) FROM A6", 3),
          Leaves("UPDATE A6 SET Col_6 = Null, Col_8 = Null WHERE Col_7=0 Or Col_7 Is Null And "
                 "LineNum < 100;",
                 "SELECT Count(Col_8) FROM A6", 3),
          Leaves("UPDATE A6 INNER JOIN CostCenters ON A6.Col_4 = CostCenters.LineNum SET A6.Col_3 "
                 "= [CCName];",
                 "SELECT Col_3 FROM A6 WHERE LineNum=2", "Split Insurance"),
          Leaves("UPDATE A6 INNER JOIN CostCenters ON A6.Col_7 = CostCenters.LineNum SET A6.Col_6 "
                 "= [CCName];",
                 "SELECT Col_6 FROM A6 WHERE LineNum=1", "Salaries and Wages of Others"),
          Run("UPDATE A6 SET Col_2 = 'B' WHERE LineNum=1;"),
          Run("UPDATE A6 SET Col_2 = 'A' WHERE LineNum=2;"),
          Leaves("UPDATE A6 SET LineNum = [LineNum]+10000 WHERE LineNum<100;",
                 "SELECT Count(*) FROM A6 WHERE LineNum In(10001,10002,10003)", 3),
          // The new entry has no code and sorts ahead of the others.
          Gives("SELECT LineNum From A6 WHERE LineNum>100 ORDER BY Col_2, LineNum;", 10003),
          Finds("SELECT LineNum From A6 WHERE LineNum>100 AND Col_2 Is Not Null ORDER BY Col_2, "
                "LineNum;",
                "LineNum<20000", 10002),
          Leaves("UPDATE A6 SET LineNum = [LineNum]-10001 WHERE LineNum>10000;",
                 "SELECT Max(LineNum) FROM A6 WHERE LineNum<100", 2),
          Run("UPDATE A6 SET LineNum = [LineNum]+10000 WHERE LineNum>0 And LineNum<100;"),
          Leaves("UPDATE A6 SET LineNum = [LineNum]-10000.01 WHERE LineNum>10000;",
                 "SELECT Max(LineNum) FROM A6 WHERE LineNum<100", 1.99),
          Run("UPDATE A6 SET LineNum = [LineNum]+10000 WHERE LineNum>=1.99 And LineNum<100;"),
          Leaves("UPDATE A6 SET LineNum = [LineNum]-10000.01 WHERE LineNum>10000;",
                 "SELECT Max(LineNum) FROM A6 WHERE LineNum<100", 1.98),
          Remakes("A6"),
          Leaves("INSERT INTO A6 (LineNum,Col_1,Col_5,Col_8) VALUES (100,'TOTAL "
                 "RECLASSIFICATIONS',0,0);",
                 "SELECT Col_1 FROM A6", "TOTAL RECLASSIFICATIONS"),
          Run("CREATE UNIQUE INDEX ndxA6 ON A6 (LineNum);"),
          Refused("Insert Into A6 (LineNum) Values (100);")}},
    };
}

inline std::vector<StatementGroup> AssetStatements() {
    return {
        {"A7p1",
         {Rows("SELECT * FROM A7p1 WHERE LineNum < 7 Or LineNum = 8 ORDER BY LineNum;", 7),
          Rows("SELECT * From A7p1 Where LineNum<7 Or LineNum=8 ORDER BY LineNum;", 7),
          Rows("SELECT * FROM A7p1 ORDER BY LineNum;", 9),
          Leaves("UPDATE A7p1 SET Col_4=IIF(IsNull(Col_2),0,Col_2)+IIF(IsNull(Col_3),0,Col_3) "
                 "Where LineNum Not In(7,9);",
                 "SELECT Col_4 FROM A7p1 WHERE LineNum=1", 150),
          Leaves("UPDATE A7p1 SET Col_6=IIF(IsNull(Col_1),0,Col_1)+IIF(IsNull(Col_4),0,Col_4)-"
                 "IIF(IsNull(Col_5),0,Col_5) Where LineNum Not In(7,9);",
                 "SELECT Col_6 FROM A7p1 WHERE LineNum=1", 1140),
          Gives("Select Sum(Col_1) As T1,Sum(Col_2) As T2,Sum(Col_3) As T3, Sum(Col_4) As T4, "
                "Sum(Col_5) As T5, Sum(Col_6) As T6, Sum(Col_7) As T7 From A7p1 Where LineNum<7;",
                1000),
          Run("Update A7p1 Set Col_1=1000,Col_2=100,Col_3=50,Col_4=150,Col_5=10,Col_6=1140,"
              "Col_7=0 Where LineNum=7;"),
          Gives("Select * From A7p1 Where LineNum=8;", 8),
          Leaves("Update A7p1 Set Col_1=1000,Col_2=100,Col_3=50,Col_4=150,Col_5=10,"
                 "Col_6=-1140.25,Col_7=0 Where LineNum=9;",
                 "SELECT Col_6 FROM A7p1 WHERE LineNum=9", -1140.25),
          Gives("Select * From A7p1 Where LineNum=9;", 9),
          Remakes("A7p1"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (1,'Land');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (2,'Land Improvements');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (3,'Buildings & Fixtures');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (4,'Building Improvements');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (5,'Fixed Equipment');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (6,'Movable Equipment');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (7,'Subtotal');"),
          Run("INSERT INTO A7p1 (LineNum,Description) VALUES (8,'Reconciling Items');"),
          Leaves("INSERT INTO A7p1 (LineNum,Description) VALUES (9,'Total');",
                 "SELECT Description FROM A7p1 WHERE LineNum=3", "Buildings & Fixtures"),
          Run("CREATE UNIQUE INDEX ndxA7p1 ON A7p1 (LineNum);"),
          Leaves("Update A7p1 SET Col_1=0, Col_2=0, Col_3=0, Col_4=0, Col_5=0, Col_6=0, Col_7=0;",
                 "SELECT Count(Col_7) FROM A7p1", 9),
          Refused("INSERT INTO A7p1 (LineNum,Description) VALUES (9,'Total');")}},
        {"A7p2",
         {Rows("SELECT * FROM A7p2 WHERE LineNum<3 ORDER BY LineNum;", 2),
          Rows("SELECT * From A7p2 Where LineNum<3 ORDER BY LineNum;", 2),
          Gives("Select Sum(Col_1) As S1, Sum(Col_2) As S2, Sum(Col_9) As S9, Sum(Col_10) As S10, "
                "Sum(Col_11) As S11, Sum(Col_12) As S12, Sum(Col_13) As S13, Sum(Col_14) As S14 "
                "From A7p2 Where LineNum<3;",
                400),
          Run("Update A7p2 Set Col_1=400,Col_2=0,Col_9=0,Col_10=0,Col_11=0,Col_12=0,Col_13=0,"
              "Col_14=0 Where LineNum=3;"),
          Leaves("UPDATE A7p2 SET Col_3=IIF(IsNull(Col_1),0,Col_1)-IIF(IsNull(Col_2),0,Col_2);",
                 "SELECT Col_3 FROM A7p2 WHERE LineNum=2", 100),
          Gives("Select Col_3 From A7p2 Where LineNum=3;", 400),
          Rows("Select * From A7p2 Order by LineNum;", 3),
          Leaves("Update A7p2 Set Col_4=0.333334 Where LineNum=1;",
                 "SELECT Col_4 FROM A7p2 WHERE LineNum=1", 0.333334),
          Leaves("Update A7p2 Set Col_4=1 Where LineNum=0;",
                 "SELECT Count(*) FROM A7p2 WHERE LineNum=0", 0),
          Run("Update A7p2 Set Col_5=300,Col_6=0,Col_7=0 Where LineNum=3;"),
          Run("Update A7p2 Set Col_5=225,Col_6=0,Col_7=0 Where LineNum=1;"),
          Gives("Select Sum(Col_5) As S5, Sum(Col_6) As S6, Sum(Col_7) As S7 From A7p2 Where "
                "LineNum<3;",
                300),
          Gives("Select Top 1 * From A7p2 Where LineNum<3 Order By Col_5 Desc;", 1),
          Gives("Select Top 1 * From A7p2 Where LineNum<3 Order By Col_6 Desc;", 1),
          Leaves("Update A7p2 Set Col_7=-2 Where LineNum=2;",
                 "SELECT Col_7 FROM A7p2 WHERE LineNum=2", -2),
          Leaves("UPDATE A7p2 SET "
                 "Col_8=IIF(IsNull(Col_5),0,Col_5)+IIF(IsNull(Col_6),0,Col_6)+IIF(IsNull(Col_7),0,"
                 "Col_7),Col_15=IIF(IsNull(Col_9),0,Col_9)+IIF(IsNull(Col_10),0,Col_10)+IIF("
                 "IsNull(Col_11),0,Col_11)+IIF(IsNull(Col_12),0,Col_12)+IIF(IsNull(Col_13),0,"
                 "Col_13)+IIF(IsNull(Col_14),0,Col_14);",
                 "SELECT Col_8 FROM A7p2 WHERE LineNum=2", 75 - 2),
          Remakes("A7p2"),
          Leaves("INSERT INTO A7p2 (LineNum,Description) SELECT LineNum, CCName FROM CostCenters "
                 "WHERE LineNum<3;",
                 "SELECT Description FROM A7p2 WHERE LineNum=1", "CRC-B&F"),
          Leaves(R"(Insert Into A7p2 (LineNum,Description) Values (3,"Total");)",
                 "SELECT Description FROM A7p2 WHERE LineNum=3", "Total"),
          Run("CREATE UNIQUE INDEX ndxA7p2 ON A7p2 (LineNum);")}},
    };
}

inline std::vector<StatementGroup> AdjustmentStatements() {
    return {
        {"A8",
         {Rows("SELECT * From A8 WHERE LineNum Not In (12,100) ORDER BY LineNum;", 16),
          Rows("SELECT * From A8 Where LineNum Not In(12,100) ORDER BY LineNum;", 16),
          Rows("Select * From A8 Where LineNum<>12 And LineNum<100 Order by LineNum;", 16),
          Run("UPDATE A8 SET Col_3=0,Col_5=0 WHERE LineNum=2;"),
          Leaves("UPDATE A8 SET Col_5=Null,Col_3=0 WHERE Col_3 In(0,Null) And Col_5 In(0,Null);",
                 "SELECT Count(Col_5) FROM A8", 1),
          Leaves("Update A8 Set Col_4=Null;", "SELECT Count(Col_4) FROM A8", 0),
          Leaves("UPDATE A8 INNER JOIN CostCenters ON A8.Col_5=CostCenters.LineNum SET "
                 "A8.Col_4=[CostCenters].[CCName];",
                 "SELECT Col_4 FROM A8 WHERE LineNum=1", "Payroll Taxes"),
          Leaves("Update A8 Set Col_3=15 Where LineNum=12;",
                 "SELECT Col_3 FROM A8 WHERE LineNum=12", 15),
          Gives("Select Sum(Col_3) As S1 From A8 Where LineNum<100;", -25),
          Run("Update A8 Set Col_3=-25 Where LineNum=100;"),
          Gives("SELECT Count(LineNum) AS Cnt From A8 WHERE Len(Trim([Col_1]))=0 Or [Col_1] Is "
                "Null;",
                0),
          Gives("SELECT Max(LineNum) AS MaxOfLn From A8 HAVING Fix([LineNum])=[LineNum] And "
                "LineNum<100;",
                17),
          Remakes("A8"),
          Run(R"(INSERT INTO A8 (LineNum,Col_1) VALUES (12,"Related organizations");)"),
          Run(R"(INSERT INTO A8 (LineNum,Col_1) VALUES (5,"Life insurance premiums where home office is direct/indirect beneficiary");)"),
          Run(R"(INSERT INTO A8 (LineNum,Col_1) VALUES (100,"Total");)"),
          Leaves(R"(Update A8 Set Col_2="A-8-1" Where LineNum=12;)",
                 "SELECT Col_2 FROM A8 WHERE LineNum=12", "A-8-1"),
          Run("CREATE UNIQUE INDEX ndxA8 ON A8 (LineNum);"),
          Leaves("UPDATE A8 SET Col_3 = 0 WHERE Col_3 = Null;", "SELECT Count(Col_3) FROM A8", 0),
          Run("UPDATE A8 INNER JOIN CostCenters ON A8.Col_5=CostCenters.LineNum SET "
              "A8.Col_4=[CostCenters].[CCName];")}},
        {"A81p1",
         {Rows("SELECT * FROM A81p1 WHERE SeqNum < 100 ORDER BY SeqNum;", 1),
          Rows("SELECT * From A81p1 Where SeqNum<100;", 1),
          Rows("SELECT * FROM A81p1 WHERE SeqNum>=1 AND SeqNum<=99 ORDER BY SeqNum;", 1),
          Rows("Select * From A81p1 Order By SeqNum;", 2),
          Leaves("UPDATE A81p1 SET Col_1=Null,Col_2='Total',Col_3=Null,Col_4=Null, Col_5=0, "
                 "Col_6=0,Col_7=0 WHERE SeqNum = 100;",
                 "SELECT Col_2 FROM A81p1 WHERE SeqNum=100", "Total"),
          Leaves("Update A81p1 Set Col_2=Null Where SeqNum<100;", "SELECT Count(Col_2) FROM A81p1",
                 1),
          Leaves("UPDATE A81p1 INNER JOIN CostCenters ON A81p1.Col_1 = CostCenters.LineNum SET "
                 "A81p1.Col_2=[CostCenters].[CCName];",
                 "SELECT Col_2 FROM A81p1 WHERE SeqNum=1", "Salaries of Officers"),
          Leaves("UPDATE A81p1 SET Col_7=IIF(IsNull(Col_5),0,Col_5)-IIF(IsNull(Col_6),0,Col_6);",
                 "SELECT Col_7 FROM A81p1 WHERE SeqNum=1", 15),
          Gives("SELECT SUM(Col_5) as T5, SUM(Col_6) as T6, Sum(Col_7) As T7 FROM A81p1 WHERE "
                "SeqNum < 100;",
                60),
          Leaves("Update A81p1 Set Col_5=60,Col_6=45,Col_7=15 Where SeqNum=100;",
                 "SELECT Col_7 FROM A81p1 WHERE SeqNum=100", 15),
          Gives("Select * From A81p1 Where SeqNum=100;", 100), Remakes("A81p1"),
          Leaves("INSERT INTO A81p1 (SeqNum,Col_2,Col_6) VALUES (100,'TOTALS',0);",
                 "SELECT Col_2 FROM A81p1", "TOTALS"),
          Run("CREATE UNIQUE INDEX ndxA81p1 ON A81p1 (SeqNum);")}},
        {"A81p2",
         {Rows("SELECT * FROM A81p2 ORDER BY SeqNum;", 1),
          Rows("SELECT * FROM A81p2 Order By SeqNum;", 1),
          Rows("SELECT * From A81p2 Where SeqNum<51;", 1),
          Gives("SELECT SeqNum FROM A81p2 ORDER BY SeqNum;", 1), Rows("Select * From A81p2;", 1),
          Finds("SELECT SeqNum FROM A81p2 ORDER BY SeqNum;", "SeqNum=1", 1),
          Finds("SELECT SeqNum FROM A81p2 ORDER BY SeqNum;", "SeqNum=7", {}),
          Gives("SELECT Max(SeqNum) AS MaxOfLn From A81p2 HAVING Fix([SeqNum])=[SeqNum] And "
                "SeqNum<=50;",
                1),
          Gives("SELECT Max(SeqNum) AS MaxOfLn From A81p2 HAVING Fix([SeqNum])=[SeqNum] And "
                "SeqNum<=10;",
                1),
          Gives("SELECT Max(SeqNum) AS MaxOfLn From A81p2 HAVING Fix([SeqNum])=[SeqNum] And "
                "SeqNum<11;",
                1),
          Remakes("A81p2"), Run("CREATE UNIQUE INDEX ndxA81p2 ON A81p2 (SeqNum);"),
          Gives("SELECT Max(SeqNum) AS MaxOfLn From A81p2 HAVING Fix([SeqNum])=[SeqNum] And "
                "SeqNum<=50;",
                {})}},
    };
}

}  // namespace zolmara::test
