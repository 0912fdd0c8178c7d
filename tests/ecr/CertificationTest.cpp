#include <filesystem>

#include "ecr/Certification.h"
#include "ecr/EcrSupport.h"

namespace zolmara::test {
namespace {

class Certification : public EcrCrf {
protected:
    Certification() { host.Folder = folder.Path(); }

    static Variant Master(std::string_view field) {
        return gDB.OpenRecordset("Select * From Master;")[field];
    }
    static void Sign() {
        gDB.Execute("Update Master Set ESFirstName=?, ESLastName=?, ESTitle=?, ESDate=?;",
                    {"Ann", "Lee", "CFO", DateTime(2024, 1, 5)});
    }
    static void ExpectUnsigned() {
        for (const char* field : {"ESFirstName", "ESLastName", "ESTitle", "ESDate"})
            EXPECT_TRUE(Master(field).IsNull()) << field;
    }
    std::string Ecr() const { return folder.File("HO123456.23A1"); }
};

TEST_F(Certification, TheWindowShowsTheStatementOfThisHomeOffice) {
    const CertificationForm form = LoadCertification();
    EXPECT_TRUE(form.lblCert.starts_with(
        "CERTIFICATION BY CHIEF FINANCIAL OFFICER OR ADMINISTRATOR OF PROVIDER(S)\r\n\r\n"
        "MISREPRESENTATION OR FALSIFICATION OF ANY INFORMATION CONTAINED IN THIS COST REPORT MAY "
        "BE PUNISHABLE BY CRIMINAL, CIVIL AND ADMINISTRATIVE ACTION"));
    EXPECT_NE(form.lblCert.find("\r\n\r\nI HEREBY CERTIFY that I have read the above "
                                "certification statement"),
              std::string::npos);
    EXPECT_NE(form.lblCert.find("Sample Home Office (12-3456) for the cost report period "
                                "beginning 10/1/2022 and ending 9/30/2023 and that to the best of "
                                "my knowledge and belief, this report and statement are true,"),
              std::string::npos);
    EXPECT_EQ(form.txtESFirst + form.txtESLast + form.txtESTitle, "");
}

TEST_F(Certification, TheWindowShowsTheLastSigner) {
    Sign();
    const CertificationForm form = LoadCertification();
    EXPECT_EQ(form.txtESFirst, "Ann");
    EXPECT_EQ(form.txtESLast, "Lee");
    EXPECT_EQ(form.txtESTitle, "CFO");
}

TEST_F(Certification, AllThreeTextsAreNeeded) {
    EXPECT_TRUE(CanAccept("Ann", "Lee", "CFO"));
    EXPECT_FALSE(CanAccept("Ann", "   ", "CFO"));
    EXPECT_FALSE(CanAccept("", "Lee", "CFO"));
    EXPECT_FALSE(CanAccept("Ann", "Lee", " "));
}

TEST_F(Certification, AcceptStoresTheSignatureAndBuilds) {
    host.Files = {Ecr()};
    AcceptCertification("Ann", "O'Hara", "Chief \"F\" Officer");
    EXPECT_EQ(Master("ESFirstName"), Variant("Ann"));
    EXPECT_EQ(Master("ESLastName"), Variant("O'Hara"));
    EXPECT_EQ(Master("ESTitle"), Variant("Chief \"F\" Officer"));
    EXPECT_EQ(Master("ESDate"), Variant(host.Clock));
    EXPECT_LT(host.IndexOf("UnloadForm: frmESCert"),
              host.IndexOf("ChooseFile: Save ECR File As ..."));
    EXPECT_EQ(StartingWith(LinesOf(Ecr()), "3S000002").at(0),
              "3S000002    1    1  " + InField("Ann O'Hara", 36));
}

TEST_F(Certification, TheSignatureStaysWhenTheNamingIsCancelled) {
    AcceptCertification("Ann", "Lee", "CFO");
    EXPECT_FALSE(std::filesystem::exists(Ecr()));
    EXPECT_EQ(Master("ESLastName"), Variant("Lee"));
    EXPECT_TRUE(Master("ESDate").IsDate());
}

TEST_F(Certification, ATextTooLongIsRefusedAndNothingStored) {
    EXPECT_THROW(AcceptCertification("Ann", std::string(256, 'x'), "CFO"), StoreError);
    ExpectUnsigned();
    EXPECT_EQ(host.Dialogs.size(), 0u);
}

TEST_F(Certification, SignManuallyClearsTheSignatureAndBuilds) {
    Sign();
    host.Files = {Ecr()};
    SignManually();
    ExpectUnsigned();
    EXPECT_EQ(StartingWith(LinesOf(Ecr()), "3S000002"), Lines{});
    EXPECT_EQ(host.Events.at(0), "UnloadForm: frmESCert");
}

TEST_F(Certification, CancelWipesAnEarlierSignatureAndBuildsNothing) {
    Sign();
    CancelCertification();
    ExpectUnsigned();
    EXPECT_EQ(host.Events, Lines{"UnloadForm: frmESCert"});
}

TEST_F(Certification, TheCommandSignsByHandWithoutTheWindow) {
    Sign();
    host.Files = {Ecr()};
    mnuReportManually();
    ExpectUnsigned();
    EXPECT_EQ(host.IndexOf("UnloadForm: frmESCert"), -1);
    EXPECT_TRUE(std::filesystem::exists(Ecr()));
}

}  // namespace
}  // namespace zolmara::test
