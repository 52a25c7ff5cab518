#pragma once

// A UserDialogs that answers from a script prepared by the test and records every dialog it
// was asked to show, in order, as "Kind: title | text".

#include "interfaces/user_dialogs.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace velmora::test {

class ScriptedDialogs : public UserDialogs {
public:
    // Answers for AskYesNo, in order; a question with no answer left fails the test.
    std::deque<bool> yesNoAnswers;
    // Answers for the file dialogs, in order (nullopt = cancel).
    std::deque<std::optional<std::string>> fileAnswers;
    // Everything shown, in order.
    std::vector<std::string> shown;

    void Inform(const std::string& title, const std::string& text) override;
    void ShowError(const std::string& text) override;
    bool AskYesNo(const std::string& title, const std::string& text) override;
    std::optional<std::string> ChooseFileToOpen(const std::string& title,
                                                const std::vector<FileFilter>& filters) override;
    std::optional<std::string> ChooseFileToSave(const std::string& title,
                                                const std::vector<FileFilter>& filters) override;

private:
    std::optional<std::string> NextFile(const std::string& kind, const std::string& title);
};

} // namespace velmora::test
