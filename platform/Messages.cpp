#include "platform/Messages.h"

#include "platform/DebugOutput.h"

#include <mutex>

namespace OV::Platform {

namespace {

bool AnswerOnStandardError(const std::string& text, const std::string& caption, int kind)
{
    const char* answer = kind == MessageOkCancel ? " [Cancel]" : kind == MessageYesNo ? " [No]" : "";
    DebugOutput(caption + ": " + text + answer);
    return kind != MessageOkCancel && kind != MessageYesNo;
}

std::mutex handlerMutex;
MessageHandler installedHandler;

}  // namespace

bool ShowMessage(const std::string& text, const std::string& caption, int kind)
{
    MessageHandler handler;
    {
        std::lock_guard<std::mutex> lock(handlerMutex);
        handler = installedHandler;
    }
    return handler ? handler(text, caption, kind) : AnswerOnStandardError(text, caption, kind);
}

MessageHandler SetMessageHandler(MessageHandler handler)
{
    std::lock_guard<std::mutex> lock(handlerMutex);
    std::swap(installedHandler, handler);
    return handler;
}

}  // namespace OV::Platform
