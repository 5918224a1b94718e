#pragma once

#include "docview/interfaces/Document.h"
#include "product/state/Serializable.h"

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::Products::VN4::State {

// The main document as host programs see it: the same document, whose saved program also
// carries the preset name and the other serialisable items (the automation map). Everything
// but load and save goes straight to the wrapped document.
class ProgramDocument : public CFW::DocView::Document {
public:
    explicit ProgramDocument(CFW::DocView::Document& document);

    // Set-up and tear-down only, while no program is loaded or saved. Not owned.
    void AddSerializable(Serializable* item) { serializables.push_back(item); }
    void RemoveSerializable(Serializable* item);
    std::string GetPresetName() const;
    void SetPresetName(const std::string& name);
    boost::signals2::connection ConnectProgramChanged(const std::function<void()>& slot);

    const CFW::DocView::DocumentProfile* GetProfile() const override { return document.GetProfile(); }
    void DropBindings() override { document.DropBindings(); }
    void Reset() override { document.Reset(); }
    bool Load(const TiXmlElement& element) override;
    bool Save(TiXmlElement& element) override;
    void SetParameter(int index, CFW::DocView::Parameter value, int source) override { document.SetParameter(index, value, source); }
    void SetNormalized(int index, float normalized, int source) override { document.SetNormalized(index, normalized, source); }
    CFW::DocView::Parameter GetParameter(int index) const override { return document.GetParameter(index); }
    CFW::DocView::Parameter GetNormalized(int index) const override { return document.GetNormalized(index); }
    void SetBPM(float bpm, int source) override { document.SetBPM(bpm, source); }
    float GetBPM() const override { return document.GetBPM(); }
    bool QueueSetParameter(int index, CFW::DocView::Parameter value, int source) override
    {
        return document.QueueSetParameter(index, value, source);
    }
    bool QueueSetNormalized(int index, float normalized, int source) override
    {
        return document.QueueSetNormalized(index, normalized, source);
    }
    bool QueueSetBPM(float bpm, int source) override { return document.QueueSetBPM(bpm, source); }
    CFW::DocView::Scheduler* GetScheduler() const override { return document.GetScheduler(); }
    void NotifyParameter(int index) override { document.NotifyParameter(index); }
    boost::signals2::connection ConnectLoaded(const LoadedSlot& slot) override { return document.ConnectLoaded(slot); }
    boost::signals2::connection ConnectParameterChanged(const ParameterChangedSlot& slot) override
    {
        return document.ConnectParameterChanged(slot);
    }
    boost::signals2::connection ConnectParameterTouched(const ParameterTouchedSlot& slot) override
    {
        return document.ConnectParameterTouched(slot);
    }
    boost::signals2::connection ConnectBPMChanged(const BPMChangedSlot& slot) override { return document.ConnectBPMChanged(slot); }
    boost::signals2::connection ConnectBeginBatch(const BatchSlot& slot) override { return document.ConnectBeginBatch(slot); }
    boost::signals2::connection ConnectEndBatch(const BatchSlot& slot) override { return document.ConnectEndBatch(slot); }
    void SetHostFlag(bool flag) override { document.SetHostFlag(flag); }

protected:
    // Loads and saves go through Load and Save above; the wrapped document does the rest.
    void DoReset() override {}
    bool DoLoad(const TiXmlElement&) override { return false; }
    bool DoSave(TiXmlElement&) override { return false; }
    void DoSetParameter(int, CFW::DocView::Parameter, int) override {}
    void DoSetBPM(float, int) override {}

private:
    CFW::DocView::Document& document;
    mutable std::recursive_mutex mutex;
    std::string presetName;
    boost::signals2::signal<void()> programChanged;
    std::vector<Serializable*> serializables;
};

}  // namespace OV::Products::VN4::State
