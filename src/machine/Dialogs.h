#pragma once

#include <functional>
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

/// The questions and messages that the logic puts to the user. Each call returns at once: the handler that asks runs to
/// its end, and what is to be done with an answer is handed over with the question. It isn't called when the user
/// cancels, nor for another device than the one that was there when he was asked.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    /// Whether somebody is there to see a message. While a call of another program runs nobody is: messages go to the
    /// status bar then, and questions are cancelled.
    [[nodiscard]] virtual bool Attended() const = 0;

    /// A message with an OK button.
    virtual void MessageBox(const std::string& text, const std::string& title, MessageIcon icon) = 0;

    using Answered = std::function<void(const std::string& answer)>;

    /// Asks for a line of text.
    virtual void InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText,
                          Answered entered) = 0;

    /// Asks for a file; the answer is its full path.
    virtual void FileDialog(const FileRequest& request, Answered chosen) = 0;

    /// Hands an address to the desktop's browser. Nothing is reported when that fails.
    virtual void OpenWebPage(const std::string& address) = 0;
};
