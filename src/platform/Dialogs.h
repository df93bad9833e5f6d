#pragma once

#include <optional>
#include <string>

enum class MessageIcon { None, Exclamation };

/// What a file dialog is asked with.
struct FileRequest {
    bool save = false;   ///< Ask for a file to write; it need not exist.
    std::string title;
    std::string filter;    ///< Pairs of caption and pattern, all separated by "|".
    int filterIndex = 1;   ///< The pair that is active at first, counted from 1.
    std::string ending;    ///< Of a file to write whose name is given without one; no point before it.
};

/// The questions and messages that the logic puts to the user. Each call returns when it has been answered.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    /// A message with an OK button.
    virtual void MessageBox(const std::string& text, const std::string& title, MessageIcon icon) = 0;

    /// A line of text, or nothing when the user cancelled.
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& defaultText) = 0;

    /// The full path of the chosen file, or nothing when the user cancelled.
    virtual std::optional<std::string> FileDialog(const FileRequest& request) = 0;

    /// Hands an address to the desktop's browser. Nothing is reported when that fails.
    virtual void OpenWebPage(const std::string& address) = 0;
};
