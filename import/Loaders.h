#pragma once

// The loaders of the ASCII import. Each takes the rows that were staged for its worksheet, checks
// them against the worksheet's rules and writes them into its table. A bad row gives a message
// and the loader goes on with the next one. The run takes the messages.

namespace zolmara {

class ImportRun;

void Load_CostCenter(ImportRun& run);
void Load_S1p1(ImportRun& run);
void Load_S1p2(ImportRun& run);
void Load_S2px(ImportRun& run, int part);  ///< 1, 2 or 3; likewise below
void Load_A(ImportRun& run);
void Load_A6(ImportRun& run);
void Load_A7p1(ImportRun& run);
void Load_A7p2(ImportRun& run);
void Load_A8(ImportRun& run);
void Load_A81p1(ImportRun& run);
void Load_A81p2(ImportRun& run);
void Load_Bpx(ImportRun& run, int part);
void Load_B1px(ImportRun& run, int part);
void Load_C1px(ImportRun& run, int part);
void Load_D1px(ImportRun& run, int part);
void Load_E1px(ImportRun& run, int part);
void Load_G(ImportRun& run);
void Load_G1(ImportRun& run);

}  // namespace zolmara
