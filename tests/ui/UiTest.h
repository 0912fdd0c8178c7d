#pragma once

// The program's windows on a desktop that answers by script. The platform shows nothing.

#include <gtest/gtest.h>

#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Dialogs.h"
#include "support/ScriptedHost.h"
#include "support/TestCrf.h"
#include "ui/main/Desktop.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/printing/QtPageDevice.h"

namespace zolmara::ui {

/// Lets the windows work for so long.
void Wait(int milliseconds);
/// Lets the windows work until something is so. False when it never comes to be; the limit is far
/// above what the slowest machine needs.
bool WaitFor(const std::function<bool()>& isSo);

/// A running program: the host, and the main window once Start has run.
class UiTest : public ::testing::Test {
protected:
    UiTest();
    ~UiTest() override;

    /// Form_Load, and the window shows.
    void Start();
    /// Start with the developer flag set.
    void StartDebug();

    /// A closed, new CRF; a field of its Master may be changed.
    std::string MakeCrf(const std::string& name, const std::string& field = "",
                        const Variant& value = {});
    /// A closed CRF with the sample home office in it, not calculated.
    std::string MakeSample(const std::string& name);
    /// Opens a CRF by the menu.
    void Open(const std::string& path);

    bool Enabled(const std::string& menu) const;
    bool Visible(const std::string& control) const;
    void Trigger(const std::string& menu);
    /// The open window of this name; fails the test without one.
    QWidget* Form(const std::string& name) const;
    template <class T>
    T* Control(const std::string& form, const std::string& name) const {
        QWidget* const window = Form(form);
        T* const control = window ? window->findChild<T*>(Q(name)) : nullptr;
        if (!control) ADD_FAILURE() << form << " has no " << name;
        return control;
    }
    void Click(const std::string& form, const std::string& button);
    std::string TextOf(const std::string& form, const std::string& field) const;
    void Key(const std::string& form, const std::string& field, const std::string& text);
    /// A window in the place of one that a worksheet would have.
    QWidget* AddWindow(const std::string& name, const std::string& caption = "");

    std::vector<std::string> BoxTexts() const;
    /// What the line at the bottom of the main window says.
    std::string Done() const;

    test::TempFolder folder;

    // --- Prepared
    std::deque<int> Answers;                       ///< of boxes; then their default buttons
    std::deque<std::optional<std::string>> Files;  ///< of file dialogs; then Cancel
    std::vector<Drive> Drives;
    bool CopyRuns = false;
    std::function<void()> OnBox;  ///< while a box stands open

    std::function<bool(QPrinter&, int pages)>
        OnAskToPrint;  ///< the print dialog; cancelled without

    // --- Recorded
    std::vector<test::Box> Boxes;
    std::vector<FileDialog> Dialogs;
    std::vector<PrintJob> Jobs;
    std::vector<std::string> PrinterDialogs;
    std::vector<std::string> Documents;
    int Ended = 0;

    std::unique_ptr<QtHost> host;
    std::unique_ptr<frmMain> main;

private:
    Desktop Script();
    std::vector<std::unique_ptr<QWidget>> windows_;
};

}  // namespace zolmara::ui
