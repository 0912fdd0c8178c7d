#include <gtest/gtest.h>

#include "core/Dialogs.h"
#include "core/Host.h"
#include "support/ScriptedHost.h"

namespace zolmara {
namespace {

TEST(DefaultAnswer, IsTheFirstButton) {
    EXPECT_EQ(DefaultAnswer(kOkOnly + kCritical), kOk);
    EXPECT_EQ(DefaultAnswer(kOkCancel), kOk);
    EXPECT_EQ(DefaultAnswer(kYesNo + kExclamation), kYes);
    EXPECT_EQ(DefaultAnswer(kYesNoCancel), kYes);
    EXPECT_EQ(DefaultAnswer(2), kAbort);
}

TEST(DefaultAnswer, IsTheButtonThatTheStyleNames) {
    EXPECT_EQ(DefaultAnswer(kOkCancel + kQuestion + kDefaultButton2), kCancel);
    EXPECT_EQ(DefaultAnswer(kYesNo + kDefaultButton2), kNo);
    EXPECT_EQ(DefaultAnswer(kYesNoCancel + kDefaultButton2), kNo);
    EXPECT_EQ(DefaultAnswer(kYesNoCancel + kDefaultButton3), kCancel);
}

TEST(ScriptedHost, GivesPreparedAnswersThenTheDefault) {
    test::ScriptedHost host;
    host.Answers = {kNo};
    EXPECT_EQ(host.MsgBox("One?", kYesNo, "T"), kNo);
    EXPECT_EQ(host.MsgBox("Two?", kYesNo, "T"), kYes);
    ASSERT_EQ(host.Boxes.size(), 2u);
    EXPECT_EQ(host.Boxes[0], (test::Box{"One?", kYesNo, "T", kNo}));
}

TEST(InstallHost, GivesBackTheFormerOne) {
    test::ScriptedHost outer;
    {
        test::ScriptedHost inner;
        EXPECT_EQ(&TheHost(), &inner);
    }
    EXPECT_EQ(&TheHost(), &outer);
}

}  // namespace
}  // namespace zolmara
