#pragma once

// In-process instances for the preset tests: a whole component tree with its worker thread,
// preset folders in a scratch folder, and ways to wait for the worker and read the state.
#include "product/MainComponentSingleModule.h"
#include "product/MainDocument.h"

#include <sys/resource.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace OV::Testing {

// Records message boxes (from any thread) while it lives, answering OK.
class MessageRecorder {
public:
    MessageRecorder();
    ~MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    // "caption: text" for each box so far.
    std::vector<std::string> Messages() const;

private:
    mutable std::mutex mutex;
    std::vector<std::string> messages;
};

// Lowers the file size limit of the process while it lives, so writes beyond it fail as on a
// full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit saved{};
    void (*previous)(int);
};

std::unique_ptr<Products::VN4::MainComponentSingleModule> MakeInstance(const std::string& presetPath,
                                                                       const std::string& factoryPath = "");

// Returns once every command queued before the call has run on the document's worker.
void Settle(Products::VN4::MainDocumentSingleModule& document);

// The equaliser's document inside the instance.
CFW::DocView::Document& Equaliser(Products::VN4::MainDocumentSingleModule& document);

// Band `band` (0 to 5) of both channels: a peaking band of `gain` dB at `hz`, switched on.
void SetPeak(Products::VN4::MainDocumentSingleModule& document, int band, float hz, float gain);

// The module form as a preset file holds it, without its GUID.
std::string ModuleText(Products::VN4::MainDocumentSingleModule& document);

// A preset file of the module form for `model`, its first band's gain at `gain`.
std::string PresetText(float gain, const std::string& model = "f8fd5639-da16-4332-86c3-e1e0e7272048");

}  // namespace OV::Testing
