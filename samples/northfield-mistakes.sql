-- Mistakes that no import or editor lets in, for the edit checks: the code, then the statement
-- that plants it. tests/editchecks/PlantedMistakesTest.cpp applies them to the sample home office
-- once it has northfield-mistakes.txt and is calculated.

-- 1010S: an amendment number on a statement that is not amended
UPDATE Sp1 SET Col_1="3" WHERE LineNum=2;
-- 1050S: a type of control that the form does not have
UPDATE S1p1 SET Col_1="15" WHERE LineNum=3;
-- 2010S: a reporting period of nine days
UPDATE S1p1 SET Col_5="01/10/2023" WHERE LineNum=2;

-- 1130 1140 1141: pools without the code of their basis
UPDATE ES SET StatCode=0;

-- 1000A: a total below zero
UPDATE A SET Col_5=-1 WHERE LineNum=100;

-- 1020C: costs to be allocated that are not those of worksheet A
UPDATE C1p3 SET CC_200=1 WHERE LineNum=53;
-- 1020D
UPDATE D1p3 SET CC_1000=1 WHERE LineNum=53;

-- 1010B 1020B: grand totals that are not those of worksheet A
UPDATE Bp3 SET CC_100=1, CC_200=2 WHERE LineNum=52;
-- 1060B
UPDATE B1p3 SET CC_800=1 WHERE LineNum=52;
-- 1000C
UPDATE Cp3 SET CC_100=1 WHERE LineNum=52;
-- 1000D
UPDATE Dp3 SET CC_900=1 WHERE LineNum=52;

-- 1030D 1040D 1050D 1060D: pools that are not those of worksheet A
UPDATE E SET CC_100=1, CC_200=2, CC_800=8, CC_900=9 WHERE LineNum=4;
-- 1080D 1090D 1280D 1100E
UPDATE E1p3 SET CC_800=8, CC_900=9, CC_2800=28, Col_7=7 WHERE LineNum=52;

-- 2020G: no net income
UPDATE G1 SET Col_2=0 WHERE LineNum=22;
