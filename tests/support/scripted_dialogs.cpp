#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace velmora::test {

void ScriptedDialogs::Inform(const std::string& title, const std::string& text) {
    shown.push_back("Inform: " + title + " | " + text);
}

void ScriptedDialogs::ShowError(const std::string& text) {
    shown.push_back("Error: " + text);
}

bool ScriptedDialogs::AskYesNo(const std::string& title, const std::string& text) {
    shown.push_back("YesNo: " + title + " | " + text);
    if (yesNoAnswers.empty()) {
        ADD_FAILURE() << "unexpected question: " << text;
        return false;
    }
    const bool answer = yesNoAnswers.front();
    yesNoAnswers.pop_front();
    return answer;
}

std::optional<std::string> ScriptedDialogs::NextFile(const std::string& kind,
                                                     const std::string& title) {
    shown.push_back(kind + ": " + title);
    if (fileAnswers.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << title;
        return std::nullopt;
    }
    auto answer = fileAnswers.front();
    fileAnswers.pop_front();
    return answer;
}

std::optional<std::string> ScriptedDialogs::ChooseFileToOpen(const std::string& title,
                                                             const std::vector<FileFilter>&) {
    return NextFile("Open", title);
}

std::optional<std::string> ScriptedDialogs::ChooseFileToSave(const std::string& title,
                                                             const std::vector<FileFilter>&) {
    return NextFile("Save", title);
}

} // namespace velmora::test
