#pragma once

// The tables beside the worksheets: identity, registry, log, findings, cost centers, staging.

#include "store/Statements.h"

namespace zolmara::test {

inline std::vector<StatementGroup> CoreStatements() {
    return {
        {"Session",
         {Gives(R"(Select Count(*) As Cnt From Worksheets Where UCase([Item]) = "A6";)", 1),
          Gives(R"(Select Count(*) As Cnt From Worksheets Where UCase([Item]) = "TBLX";)", 0),
          Gives("SELECT LineNum, Col_4 As ColA, Col_5 As ColB, Col_6 As ColC FROM S1p1 WHERE "
                "Int(LineNum) In(4,5,6,7,8,9,10) ORDER BY LineNum;",
                4)}},
        {"Master",
         {Leaves("Update Master Set ESFirstName=Null, ESLastName=Null, ESTitle=Null, "
                 "ESDate=Null;",
                 "SELECT Count(ESFirstName) FROM Master", 0),
          Leaves(
              R"(UPDATE Master SET BuildDate = #2/1/2024 10:30:00 AM#, ProviderNumber = "98-7654", FYStart = #10/1/2022#, FYEnd = #9/30/2023#, ProviderName = "Smith's Home Office";)",
              "SELECT ProviderName FROM Master", "Smith's Home Office"),
          Gives(R"(SELECT Format(FYEnd,"mm/dd/yyyy") FROM Master;)", "09/30/2023")}},
        {"Registry",
         {Gives(R"(Select * From Worksheets Where UCase(Item) = "A7P2")", "A7p2"),
          Rows(R"(Select * From Worksheets Where UCase(Item) = "A82")", 0),
          Rows("SELECT Item, Calc_Lvl, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY "
               "Calc_Lvl, ItemName;",
               46),
          Gives("SELECT Item, Calc_Lvl, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY "
                "Calc_Lvl, ItemName;",
                "A6"),
          Gives("Select Item, ItemName From Worksheets Where Calc_Lvl < 900 Order By Item;", "A"),
          Rows("Select Item From Worksheets Where Calc_Lvl<900;", 46),
          Rows("SELECT Item From Worksheets Where Calc_Lvl < 999 ORDER BY Item;", 46),
          Gives(R"(SELECT Item From Worksheets Where (((ItemName) > "A")) ORDER BY ItemName ;)",
                "A6"),
          Gives(
              R"(SELECT Item From Worksheets Where (((ItemName) < "A-7  Part-1")) ORDER BY ItemName DESC;)",
              "A6"),
          Rows(R"(SELECT Item From Worksheets Where (((ItemName) < "A")) ORDER BY ItemName DESC;)",
               0),
          Remakes("Worksheets"),
          Run("CREATE UNIQUE INDEX ndxWorksheets ON Worksheets (Item) WITH DISALLOW NULL;"),
          Refused("INSERT INTO Worksheets (Calc_Lvl) VALUES (1);")}},
        {"Log",
         {Leaves(
              R"(INSERT INTO Log (LogType, [DateTime], Severity, Message) VALUES ("C","2/1/2024 10:30:00 AM","Warning","The name ""North"" is taken.");)",
              "SELECT Message FROM Log WHERE LogType='C'", R"(The name "North" is taken.)"),
          Leaves("DELETE * FROM Log WHERE LogType = 'I';",
                 "SELECT Count(*) FROM Log WHERE LogType='C'", 1),
          Leaves("DELETE * FROM Log WHERE LogType = 'C';",
                 "SELECT Count(*) FROM Log WHERE LogType='C'", 0),
          Leaves("DELETE * FROM Log WHERE LogType = '';", "SELECT Count(*) FROM Log", 1),
          Remakes("Log"),
          Leaves("INSERT INTO Log (LogType, [DateTime], Severity, Module, [Procedure], "
                 "Worksheet, Message) VALUES ('*', '2/1/2024 10:30:00 AM', 'F.Y.I.', "
                 "'Build_Log', 'Build_Log', 'Log', 'Log table built/initialized.');",
                 "SELECT [Procedure] FROM Log", "Build_Log"),
          Gives(R"(SELECT Format([DateTime],"mm/dd/yyyy") FROM Log;)", "02/01/2024")}},
        {"HeaderLines",
         {Rows("SELECT * FROM HeaderLines Order By LineNum;", 3), Remakes("HeaderLines"),
          Run("INSERT INTO HeaderLines (LineNum) VALUES (2);"),
          Leaves("INSERT INTO HeaderLines (LineNum) VALUES (1);",
                 "SELECT Count(LineText) FROM HeaderLines", 0),
          Gives("SELECT * FROM HeaderLines Order By LineNum;", 1)}},
        {"CostCenters",
         {Rows("SELECT * FROM CostCenters Where LineNum Not In(3,7,99) ORDER BY LineNum", 27),
          Rows("Select * from CostCenters order by LineNum", 27),
          Rows("SELECT * FROM CostCenters ORDER BY LineNum;", 27),
          Gives("SELECT LineNum From CostCenters ORDER BY LineNum;", 1),
          Rows("Select * From CostCenters;", 27),
          Gives("SELECT Count(LineNum) AS CountOfLineNum, Max(LineNum) AS MaxOfLineNum, "
                "Min(LineNum) AS MinOfLineNum From CostCenters Where LineNum>=4 And LineNum<5;",
                2),
          Gives(
              R"(SELECT Count(LineNum) AS Cnt From CostCenters WHERE Trim(Ucase([CCName]))="LEGAL FEES" And LineNum <> 15)",
              1),
          Gives(
              R"(SELECT Count(LineNum) AS Cnt From CostCenters WHERE Trim(Ucase([CCName]))="LEGAL FEES" And LineNum <> 14)",
              0),
          Gives("SELECT LineNum, CCName FROM CostCenters WHERE LineNum = 4.01 And LineNum Not "
                "In(3,7,28,99,100);",
                4.01),
          Rows("SELECT LineNum, CCName FROM CostCenters WHERE LineNum = 28 And LineNum Not "
               "In(3,7,28,99,100);",
               0),
          Gives("SELECT LineNum, CCName FROM CostCenters WHERE LineNum = 8 And LineNum Not "
                "In(3,99,100) And (LineNum<3 or LineNum>7) ;",
                8),
          Rows("SELECT LineNum, CCName FROM CostCenters WHERE LineNum = 5 And LineNum Not "
               "In(3,99,100) And (LineNum<3 or LineNum>7) ;",
               0),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;", "LineNum=4.01", 4.01),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;", "LineNum>=29", {}),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;", "LineNum>=6.5", 8),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;",
                "IsNull(CCName) Or Len(Trim(CCName))=0", {}),
          Remakes("CostCenters"),
          Run("INSERT INTO CostCenters (LineNum,CCName,StatLabel1,StatLabel2,StatCode) VALUES "
              "(1,'CRC-B&F','Square','Feet',1);"),
          Leaves("INSERT INTO CostCenters (LineNum,CCName) VALUES (5,'Taxes & Licenses-Other "
                 "CRC');",
                 "SELECT CCName FROM CostCenters WHERE StatCode Is Null",
                 "Taxes & Licenses-Other CRC"),
          Run("Insert Into CostCenters (LineNum) Values(29);"),
          Gives("SELECT Count(LineNum) AS Cnt From CostCenters WHERE Len(Trim([CCName]))=0 Or "
                "[CCName] Is Null;",
                1),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;",
                "Len(Trim([CCName]))=0 Or [CCName] Is Null", 29),
          Finds("SELECT * FROM CostCenters ORDER BY LineNum;",
                "IsNull(CCName) Or Len(Trim(CCName))=0", 29)}},
        {"ES",
         {Rows("SELECT * FROM ES Where LineNum ORDER BY LineNum", 4),
          Rows("Select * from ES order by LineNum", 4),
          Gives("Select * from ES Where LineNum=1;", 1),
          Gives("Select * from ES Where LineNum=3;", 3), Remakes("ES"),
          Leaves("INSERT INTO ES (LineNum,CCName,StatLabel1,StatLabel2,StatCode) VALUES (2,'E-1 "
                 "Part I','Total','Costs',1);",
                 "SELECT CCName FROM ES", "E-1 Part I")}},
        {"Error",
         {Rows("Select * From Error;", 2),
          Leaves(
              R"(INSERT INTO Error VALUES ("Non-Fatal Error","1065","Line ""4.01"", it's not defined");)",
              "SELECT Message FROM Error WHERE Code='1065'", R"(Line "4.01", it's not defined)"),
          Gives("Select MAX(LEN(Message)) as Mx FROM Error;", 29),
          Leaves("DELETE * FROM Error;", "SELECT Count(*) FROM Error", 0),
          Gives("Select MAX(LEN(Message)) as Mx FROM Error;", {})}},
        {"Staging",
         {Rows("Select * From ImportASCII;", 5),
          Rows(
              R"(Select Distinct ucase([WorkSheet]) As WS From ImportASCII Where ucase([WorkSheet]) = 'COSTCENTER' Or Ucase(Left([WorkSheet],1))="S";)",
              2),
          Rows(
              R"(SELECT Distinct UCase([WorkSheet]) AS WS FROM ImportASCII Where NOT (ucase([WorkSheet]) = 'COSTCENTER' Or Ucase(Left([WorkSheet],1))="S");)",
              2),
          Rows(
              R"(SELECT Row, Col, Contents From ImportASCII Where UCase([WorkSheet]) = "A6" ORDER BY Row, Col;)",
              2),
          Gives(
              R"(SELECT Row, Col, Contents From ImportASCII Where UCase([WorkSheet]) = "A6" ORDER BY Row, Col;)",
              1),
          Rows(
              R"(SELECT Row, Col, Contents From ImportASCII Where UCase([WorkSheet]) = "A81p2" ORDER BY Row, Col;)",
              1),
          Leaves("Delete From ImportASCII;", "SELECT Count(*) FROM ImportASCII", 0)}},
    };
}

}  // namespace zolmara::test
