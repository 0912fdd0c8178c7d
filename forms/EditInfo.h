#pragma once

// frmCRFEditInfo: whose statement the open CRF is, and the change of it.
//
// The window shows PresentIdentity, checks each field as it is left, and calls cmdSave or
// cmdSaveAs. Where the answer is Saved, it unloads all open forms but frmMain, frmEditCCs,
// frmEditS1p1, frmViewS1p1 and itself, and then itself. frmEditS1p1 goes on from there: unless the
// dialog was cancelled it runs UpgradeCRF, shows frmSplash and unloads every form but frmMain and
// frmSplash.

#include <string>

namespace zolmara {

/// The fields as they are shown.
struct IdentityFields {
    std::string ProviderNum;   ///< txtProviderNum, NN-NNNN
    std::string FYStart;       ///< txtFYStart, in "Short Date"
    std::string FYEnd;         ///< txtFYEnd
    std::string FacilityName;  ///< txtFacilityName
};

enum class IdentityField { None, ProviderNum, FYStart, FYEnd, FacilityName };

/// How a save ended.
enum class IdentitySave {
    Saved,
    Refused,    ///< a box has told; the dialog stays, and the cursor goes to `Wrong`
    Cancelled,  ///< no file was chosen, or it was refused: the dialog stays
};

struct IdentityResult {
    IdentitySave End = IdentitySave::Refused;
    IdentityField Wrong = IdentityField::None;
};

/// The identity of the open CRF.
IdentityFields PresentIdentity();

/// What a field checks when it is left: a box, and False, for a number that is none or a date that
/// is none. An empty date is left alone here. A start date fills an empty end date.
bool CheckIdentityOnExit(IdentityFields& fields, IdentityField left);

/// The check of both save buttons. Puts the fields into the form in which they are shown. Gives the
/// field to go back to, None when they may be saved.
IdentityField CheckIdentity(IdentityFields& fields);

/// cmdSave: checks, then writes the identity to the open CRF, where it voids the electronic
/// signature. Refreshes frmEditS1p1 and frmViewS1p1. StoreError when it cannot be written; the
/// session is then as before.
IdentityResult SaveIdentity(IdentityFields& fields);

/// cmdSaveAs: checks, asks for the new file, copies the CRF, goes on with the copy, and writes the
/// identity there.
IdentityResult SaveIdentityAs(IdentityFields& fields);

/// The same to a given path. Saving onto the open file is refused with a box.
IdentityResult SaveIdentityAs(IdentityFields& fields, const std::string& path);

}  // namespace zolmara
