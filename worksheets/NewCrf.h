#pragma once

// A Cost Report File made from nothing: the checks of frmCreateNewCRF, and New_CRF.

#include <string>

namespace zolmara {

/// What frmCreateNewCRF asks for, as text.
struct NewCrfFields {
    std::string FormNum = "287";
    std::string ProviderNum;  ///< six digits, with or without "-"; shown as NN-NNNN
    std::string FYStart;      ///< a date
    std::string FYEnd;        ///< a date, or empty for one year from the start
    std::string FacilityName;
};

enum class NewCrfField { None, ProviderNum, FYStart, FYEnd, FacilityName };

/// The checks of cmdCreate. Puts the fields into the form in which they are shown, and shows
/// what is wrong with them. Gives the field to go back to, None when New_CRF may run.
NewCrfField CheckNewCrfFields(NewCrfFields& fields);

/// What txtProviderNum checks when it is left: False, and a box, for anything but letters,
/// digits and "-".
bool CheckProviderNumOnExit(const std::string& number);

/// New_CRF: asks for the file's name and makes it. False when the user cancelled, and as
/// CreateCrf does.
bool New_CRF(const NewCrfFields& fields);

/// New_CRF behind its dialog: makes the file, in place of one that is there, and leaves it open
/// as the session's CRF. False when the file could not be created, which has been shown;
/// StoreError when its tables could not be made. In both cases what stood under that name is as it
/// was, and no CRF is open.
bool CreateCrf(const std::string& path, const NewCrfFields& fields);

}  // namespace zolmara
