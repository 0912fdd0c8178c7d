#pragma once

// The loaders of the ASCII import. Each takes the rows that were staged for its worksheet, checks
// them against the worksheet's rules and writes them into its table. A bad row gives a message
// and the loader goes on with the next one.

namespace zolmara {

void Load_CostCenter();
void Load_S1p1();
void Load_S1p2();
void Load_S2px(int part);  ///< 1, 2 or 3; likewise below
void Load_A();
void Load_A6();
void Load_A7p1();
void Load_A7p2();
void Load_A8();
void Load_A81p1();
void Load_A81p2();
void Load_Bpx(int part);
void Load_B1px(int part);
void Load_C1px(int part);
void Load_D1px(int part);
void Load_E1px(int part);
void Load_G();
void Load_G1();

}  // namespace zolmara
