#include "support/ScriptedHost.h"

#include <algorithm>
#include <ostream>

#include "core/Dialogs.h"
#include "core/Host.h"
#include "core/Status.h"

namespace zolmara::test {
namespace {

template <class T>
T TakeFirst(std::deque<T>& prepared, T otherwise) {
    if (prepared.empty()) return otherwise;
    T first = prepared.front();
    prepared.pop_front();
    return first;
}

std::string OnOff(bool on) { return on ? "True" : "False"; }

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << "[" << box.Style << " " << box.Title << "] " << box.Text << " -> " << box.Answer;
}

ScriptedHost::ScriptedHost() : former_(InstallHost(this)) {}
ScriptedHost::~ScriptedHost() { InstallHost(former_); }

std::vector<std::string> ScriptedHost::Texts() const {
    std::vector<std::string> texts;
    for (const Box& box : Boxes) texts.push_back(box.Text);
    return texts;
}

int ScriptedHost::IndexOf(const std::string& event) const {
    const auto found = std::find(Events.begin(), Events.end(), event);
    return found == Events.end() ? -1 : static_cast<int>(found - Events.begin());
}

void ScriptedHost::Forget() {
    Boxes.clear();
    Dialogs.clear();
    Events.clear();
    Beeps = 0;
    DoEventsCount = 0;
}

void ScriptedHost::Record(const std::string& name, const std::string& argument) {
    Events.push_back(argument.empty() ? name : name + ": " + argument);
}

int ScriptedHost::MsgBox(const std::string& text, int style, const std::string& title) {
    const int answer = TakeFirst(Answers, DefaultAnswer(style));
    Boxes.push_back({text, style, title, answer});
    Record("MsgBox", text);
    return answer;
}

void ScriptedHost::Beep() {
    ++Beeps;
    Record("Beep", "");
}

void ScriptedHost::SetPointer(Pointer pointer) {
    PointerNow = pointer;
    Record("SetPointer", pointer == Pointer::Hourglass ? "Hourglass" : "Normal");
}

void ScriptedHost::ShowCalcMsg(const std::string& text) {
    CalcMsg = text;
    Record("ShowCalcMsg", text);
}

void ScriptedHost::HideCalcMsg() {
    CalcMsg.clear();
    Record("HideCalcMsg", "");
}

void ScriptedHost::ShowProgress(double part) { Progress = part; }

void ScriptedHost::EnableMenu(const std::string& name, bool enabled) {
    Menus[name] = enabled;
    Record("EnableMenu", name + "=" + OnOff(enabled));
}

void ScriptedHost::EnableMain(bool enabled) {
    MainEnabled = enabled;
    Record("EnableMain", OnOff(enabled));
}

void ScriptedHost::RefreshMenus() { Record("RefreshMenus", ""); }

void ScriptedHost::SetCaption(const std::string& text) {
    Caption = text;
    Record("SetCaption", text);
}

void ScriptedHost::SetCrfName(const std::string& path) {
    CrfName = path;
    Record("SetCrfName", path);
}

void ScriptedHost::ShowCrf(const std::string& path) {
    CrfName = path;
    CrfShown = true;
    Welcome = false;
    Record("ShowCrf", path);
}

void ScriptedHost::ShowWelcome() {
    CrfName.clear();
    CrfShown = false;
    Welcome = true;
    Record("ShowWelcome", "");
}

bool ScriptedHost::WelcomeVisible() { return Welcome; }

void ScriptedHost::SetWelcomeVisible(bool visible) {
    Welcome = visible;
    Record("SetWelcomeVisible", OnOff(visible));
}

void ScriptedHost::StartHelpText() { Record("StartHelpText", ""); }

void ScriptedHost::DoEvents() {
    ++DoEventsCount;
    if (OnDoEvents) OnDoEvents();
}

std::optional<std::string> ScriptedHost::ChooseFile(const FileDialog& dialog) {
    Dialogs.push_back(dialog);
    Record("ChooseFile", dialog.Title);
    return TakeFirst(Files, std::optional<std::string>());
}

int ScriptedHost::CloseAllForms(bool keepCostCenterForms) {
    Record("CloseAllForms", OnOff(keepCostCenterForms));
    return TakeFirst(CloseResults, 0);
}

void ScriptedHost::RefreshOpenForms(const std::string& exceptForm) {
    Record("RefreshOpenForms", exceptForm);
}

void ScriptedHost::RefreshWorksheetForm(const std::string& mode, const std::string& item) {
    Record("RefreshWorksheetForm", mode + " " + item);
}

bool ScriptedHost::FormIsOpen(const std::string& name) { return OpenForms.count(name) > 0; }

void ScriptedHost::SetGrd(const std::string& form) { Record("SetGrd", form); }

void ScriptedHost::UnloadForm(const std::string& name) {
    Record("UnloadForm", name);
    OpenForms.erase(name);
}

void ScriptedHost::ShowErrors(const std::string& caption) { Record("ShowErrors", caption); }

void ScriptedHost::ShowCopy2Floppy(const std::string& ecrPath) {
    Record("ShowCopy2Floppy", ecrPath);
}

DateTime ScriptedHost::Now() { return Clock; }

std::string ScriptedHost::GetSetting(const std::string& application, const std::string& section,
                                     const std::string& key, const std::string& fallback) {
    const auto found = Settings.find(application + "/" + section + "/" + key);
    return found == Settings.end() ? fallback : found->second;
}

void ScriptedHost::SaveSetting(const std::string& application, const std::string& section,
                               const std::string& key, const std::string& value) {
    Settings[application + "/" + section + "/" + key] = value;
    Record("SaveSetting", application + "/" + section + "/" + key + "=" + value);
}

std::string ScriptedHost::ProgramFolder() { return Folder; }

void ScriptedHost::EndProgram() {
    Record("EndProgram", "");
    throw ProgramEnded{};
}

}  // namespace zolmara::test
