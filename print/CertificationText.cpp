#include "print/CertificationText.h"

#include <fmt/format.h>

namespace zolmara {

const std::string_view kCertificationHeading =
    "CERTIFICATION BY CHIEF FINANCIAL OFFICER OR ADMINISTRATOR OF PROVIDER(S)";

const std::string_view kCertificationWarning =
    "MISREPRESENTATION OR FALSIFICATION OF ANY INFORMATION CONTAINED IN THIS COST REPORT MAY BE "
    "PUNISHABLE BY CRIMINAL, CIVIL AND ADMINISTRATIVE ACTION, FINE AND/OR IMPRISONMENT UNDER "
    "FEDERAL LAW. FURTHERMORE, IF SERVICES IDENTIFIED IN THIS REPORT WERE PROVIDED OR PROCURED "
    "THROUGH THE PAYMENT DIRECTLY OR INDIRECTLY OF A KICKBACK OR WERE OTHERWISE ILLEGAL, "
    "CRIMINAL, CIVIL AND ADMINISTRATIVE ACTION, FINES AND/OR IMPRISONMENT MAY RESULT.";

std::string CertificationStatement(std::string_view homeOffice, std::string_view start,
                                   std::string_view end) {
    return fmt::format(
        "I HEREBY CERTIFY that I have read the above certification statement and that I have "
        "examined the accompanying electronically filed or manually submitted cost report and the "
        "Home Office Cost Statement prepared by {} for the cost report period beginning {} and "
        "ending {} and that to the best of my knowledge and belief, this report and statement are "
        "true, correct, complete and prepared from the books and records of the home office in "
        "accordance with applicable instructions, except as noted. I further certify that I am "
        "familiar with the laws and regulations regarding the provision of health care services, "
        "and that the services identified in this cost report were provided in compliance with "
        "such laws and regulations.",
        homeOffice, start, end);
}

const std::string_view kPaperworkNotice =
    "According to the Paperwork reduction Act of 1995, no persons are required to respond to a "
    "collection of information unless it displays a valid OMB control number. The valid OMB "
    "control number for this information collection is 0938-0202. The time required to complete "
    "this information collection is estimated at 466 hours per response, including the time to "
    "review instructions, search existing resources, gather the data needed, and complete and "
    "review the information collection. If you have comments concerning the accuracy of the time "
    "estimate or suggestions for improving the form, please write to: CMS, 7500 Security "
    "Boulevard, Attn: PRA Report Clearance Officer, Mail Stop C4-26-05, Baltimore, Maryland "
    "21244-1850.";

}  // namespace zolmara
