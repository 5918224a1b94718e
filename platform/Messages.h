#pragma once

#include <functional>
#include <string>

namespace OV::Platform {

// What a message box asks: a plain notice, OK or Cancel, Yes or No.
enum MessageKind { MessagePlain = 0, MessageOkCancel = 1, MessageYesNo = 2 };

// Answers true for OK or Yes.
using MessageHandler = std::function<bool(const std::string& text, const std::string& caption,
                                          int kind)>;

// Shows a modal message box through the installed handler; true when the answer was OK or Yes.
// Main thread; blocks until answered.
bool ShowMessage(const std::string& text, const std::string& caption, int kind);

// Installs a handler and returns the one it replaces. An empty handler restores the default,
// which writes one line to standard error and answers what changes nothing: OK to a plain box,
// Cancel or No to a question.
MessageHandler SetMessageHandler(MessageHandler handler);

}  // namespace OV::Platform
