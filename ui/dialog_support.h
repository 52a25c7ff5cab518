#pragma once

// What every dialog window shares: the one place where a run-time error of a forwarded call
// is caught and shown, push buttons that Enter does not press, and showing a dialog over a
// parent that the window disabled while it is open.

#include "model/runtime_error.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <QString>

class QDialog;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace velmora {

class UserDialogs;

// UTF-8 text of the logic as Qt text.
inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
// A label's caption with an access key on its first letter: "&" + text.
inline QString WithAccessKey(std::string_view text) {
    return "&" + ToQt(text);
}

// Runs action; a RuntimeError it raises is shown with ShowError and the dialog goes on.
// Returns whether the action ran to its end.
template <typename Action> bool RunShowingErrors(UserDialogs& dialogs, Action&& action);

// Runs action and returns its value; a RuntimeError it raises is shown with ShowError and
// gives nullopt. Use it rather than assigning to a variable inside RunShowingErrors: a call
// that throws may already have written into the variable it was assigned to.
template <typename Action>
auto Attempt(UserDialogs& dialogs, Action&& action) -> std::optional<decltype(action())>;

// Every push button under root stops being a default button: Enter presses none of them.
void ClearAutoDefault(QWidget* root);

// A dialog is a child of the window that opened it, and that window is disabled while the
// dialog is open; a disabled parent would disable the dialog too, so it is enabled on its own.
void EnableOverParent(QDialog& dialog);

// Shows text in field as the program's value: no signal, and the cursor left alone when the
// field already holds it.
void ShowText(QLineEdit* field, const std::string& text);

// The character a key press hands to a field's key filter: a printable character, and
// Backspace as U'\b' when withBackspace; nullopt for every other key (arrows, Delete, Tab),
// which the field handles as usual.
std::optional<char32_t> FilteredKey(const QKeyEvent& key, bool withBackspace);

// The dialog's run-time errors all go to ShowError; the name keeps the catch in one place.
void ShowRuntimeError(UserDialogs& dialogs, const RuntimeError& error);

template <typename Action> bool RunShowingErrors(UserDialogs& dialogs, Action&& action) {
    try {
        std::forward<Action>(action)();
        return true;
    } catch (const RuntimeError& error) {
        ShowRuntimeError(dialogs, error);
        return false;
    }
}

template <typename Action>
auto Attempt(UserDialogs& dialogs, Action&& action) -> std::optional<decltype(action())> {
    try {
        return std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        ShowRuntimeError(dialogs, error);
        return std::nullopt;
    }
}

// Whether a key press on an Index field is swallowed. Only printable characters meet filter
// (a call returning whether the character is accepted): Backspace, Delete and the arrows edit
// the field as usual in either base. A refused character, or one whose filter failed with a
// run-time error (shown), is swallowed.
template <typename Filter>
bool SwallowIndexKey(const QKeyEvent& key, UserDialogs& dialogs, Filter&& filter) {
    const auto typed = FilteredKey(key, false);
    if (!typed) {
        return false;
    }
    const auto accepted = Attempt(dialogs, [&] { return filter(*typed); });
    return accepted.has_value() && !*accepted;
}

} // namespace velmora
