#pragma once

#include "docview/interfaces/Document.h"
#include "docview/interfaces/DocumentContext.h"

#include <atomic>
#include <map>
#include <mutex>
#include <memory>
#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::DocViewUtils {

// The standard document: one 32-bit cell per row, signals for every change, batches that make
// a reload one step for the audio side, and state as XML attributes.
//
// The constructor leaves every row at its default (preferences and properties included).
// Cells are atomic words: a reader on any thread never sees a torn value. Transient rows may be
// set from the audio thread: that stores the cell and nothing else.
class BasicDocument : public DocView::Document {
public:
    // `context` may be null: the document then cannot queue and binds to no property.
    BasicDocument(const DocView::DocumentProfile* profile, DocView::DocumentContext* context);
    ~BasicDocument() override;

    const DocView::DocumentProfile* GetProfile() const override { return profile; }
    void DropBindings() override;
    void Reset() override;
    bool Load(const TiXmlElement& element) override;
    bool Save(TiXmlElement& element) override { return DoSave(element); }
    void SetParameter(int index, DocView::Parameter value, int source) override;
    void SetNormalized(int index, float normalized, int source) override;
    DocView::Parameter GetParameter(int index) const override;
    DocView::Parameter GetNormalized(int index) const override;
    void SetBPM(float bpm, int source) override { DoSetBPM(bpm, source); }
    float GetBPM() const override { return bpm.load(std::memory_order_relaxed); }
    bool QueueSetParameter(int index, DocView::Parameter value, int source) override;
    bool QueueSetNormalized(int index, float normalized, int source) override;
    bool QueueSetBPM(float bpm, int source) override;
    DocView::Scheduler* GetScheduler() const override;
    void NotifyParameter(int index) override { parameterTouched(*this, index); }
    boost::signals2::connection ConnectLoaded(const LoadedSlot& slot) override;
    boost::signals2::connection ConnectParameterChanged(const ParameterChangedSlot& slot) override;
    boost::signals2::connection ConnectParameterTouched(const ParameterTouchedSlot& slot) override;
    boost::signals2::connection ConnectBPMChanged(const BPMChangedSlot& slot) override;
    boost::signals2::connection ConnectBeginBatch(const BatchSlot& slot) override;
    boost::signals2::connection ConnectEndBatch(const BatchSlot& slot) override;
    void SetHostFlag(bool flag) override { hostFlag = flag; }

    // An enum attribute whose name was not among the row's names, for older state.
    struct Unresolved {
        int index;
        std::string text;
    };
    // Loads like DoLoad, but keeps the unknown enum names for the caller.
    bool LoadOlderState(const TiXmlElement& element, std::vector<Unresolved>& unresolved);

    // The property that tells that serialisable state was edited.
    static constexpr const char* editedProperty = "SerializableParamChanged";

protected:
    void DoReset() override;
    bool DoLoad(const TiXmlElement& element) override;
    bool DoSave(TiXmlElement& element) override;
    void DoSetParameter(int index, DocView::Parameter value, int source) override;
    void DoSetBPM(float bpm, int source) override;

    // Runs `work` as one batch: BeginBatch before the outermost, EndBatch after it.
    template <typename Work>
    auto InBatch(Work&& work);
    DocView::DocumentContext* GetContext() const { return context; }
    bool IsValidIndex(int index) const { return index >= 0 && index < profile->GetParameterCount(); }
    // The load itself, without a batch: reads the serialisable rows (missing or unknown ones
    // take their defaults), applies them in index order and tells the Loaded listeners. With
    // `unresolved`, unknown enum names are kept there. False when a name was unknown.
    bool ReadAttributes(const TiXmlElement& element, std::vector<Unresolved>* unresolved);

private:
    // Limits the value to the row, stores it; true when the cell's bits changed.
    bool StoreValue(int index, DocView::Parameter value);
    // The value of the row at `normalized`, as SetNormalized sets it.
    DocView::Parameter FromNormalized(int index, float normalized) const;
    // Worker: the preference changes that found the command pool full.
    void ApplyPendingPreferences();
    DocView::Parameter Stored(int index) const;

    std::vector<boost::signals2::scoped_connection> preferenceBindings;
    // A preference change that found the pool full waits here for the worker's next tick.
    std::mutex pendingMutex;
    std::map<int, DocView::Parameter> pendingPreferences;
    boost::signals2::scoped_connection preferenceTick;
    std::vector<boost::signals2::scoped_connection> propertyBindings;
    const DocView::DocumentProfile* profile;
    DocView::DocumentContext* context;
    std::vector<std::atomic<std::uint32_t>> values;
    std::atomic<float> bpm{120.0f};
    boost::signals2::signal<void(Document&)> loaded;
    boost::signals2::signal<void(Document&, int, DocView::Parameter, int)> parameterChanged;
    boost::signals2::signal<void(Document&, int)> parameterTouched;
    boost::signals2::signal<void(Document&, float, int)> bpmChanged;
    boost::signals2::signal<void(Document&)> beginBatch;
    boost::signals2::signal<void(Document&)> endBatch;
    unsigned batchDepth = 0;
    // A reference that owns nothing, so that a pending command can hold a weak one.
    std::shared_ptr<DocView::Document> self;
    bool hostFlag = false;
};

template <typename Work>
auto BasicDocument::InBatch(Work&& work)
{
    struct Guard {
        BasicDocument& document;
        explicit Guard(BasicDocument& owner) : document(owner)
        {
            if (document.batchDepth++ == 0)
                document.beginBatch(document);
        }
        ~Guard()
        {
            if (--document.batchDepth == 0)
                document.endBatch(document);
        }
    } guard(*this);
    return work();
}

}  // namespace OV::CFW::DocViewUtils
