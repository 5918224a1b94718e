#include "docview/utils/MAFMediator.h"

#include "docview/utils/BasicMAFProfile.h"
#include "docview/utils/ExchangeRing.h"

#include <algorithm>
#include <mutex>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;
using DocView::ParameterInfo;

MAFMediator::MAFMediator(const BasicMAFProfile& profile, DocView::Document& document, ExchangeRing& ring)
    : document(&document), ring(&ring)
{
    const DocView::DocumentProfile& rows = *document.GetProfile();
    const int rowCount = rows.GetParameterCount();

    for (int i = 0; i < profile.GetCreatorCount(); ++i)
        allMediators.push_back(profile.GetCreator(i).Create(*this));

    byParameter.resize(static_cast<std::size_t>(rowCount));
    for (const std::unique_ptr<MAFParamMediator>& mediator : allMediators) {
        if (mediator->IsEvent()) {
            eventList.push_back(mediator.get());
            continue;
        }
        for (int i = 0; i < mediator->GetParameterCount(); ++i) {
            const int row = mediator->GetParameter(i);
            if (row < 0 || row >= rowCount)
                continue;
            if ((rows.GetParameterInfo(row).flags & ParameterInfo::Transient) != 0) {
                if (std::find(pollList.begin(), pollList.end(), mediator.get()) == pollList.end())
                    pollList.push_back(mediator.get());
            } else {
                byParameter[static_cast<std::size_t>(row)].push_back(mediator.get());
            }
        }
    }

    lists.reserve(ExchangeRing::capacity);
    for (int slot = 0; slot < ExchangeRing::capacity; ++slot)
        lists.emplace_back(rowCount);

    changedConnection = document.ConnectParameterChanged(
        [this](DocView::Document&, int index, Parameter value, int) { Post(index, value); });
    beginBatchConnection = document.ConnectBeginBatch([this](DocView::Document&) { BeginBatch(); });
    endBatchConnection = document.ConnectEndBatch([this](DocView::Document&) { EndBatch(); });

    std::lock_guard<std::mutex> guard(ring.WriterMutex());
    int slot;
    ring.BeginWrite(slot);
    for (int row = 0; row < rowCount; ++row) {
        if (!byParameter[static_cast<std::size_t>(row)].empty())
            lists[static_cast<std::size_t>(slot)].Put(row, document.GetParameter(row));
    }
    ring.EndWrite();
}

MAFMediator::~MAFMediator()
{
    // No later signal may reach a half-destroyed mediator.
    changedConnection.disconnect();
    beginBatchConnection.disconnect();
    endBatchConnection.disconnect();
    std::lock_guard<std::mutex> guard(ring->WriterMutex());
    if (inBatch)
        ring->EndWrite();
}

void MAFMediator::Attach(DocView::MAFWrapper* wrapper, const std::string& prefix)
{
    for (const std::unique_ptr<MAFParamMediator>& mediator : allMediators)
        mediator->Attach(wrapper, prefix);
    dirty.store(true, std::memory_order_release);
}

void MAFMediator::Post(int index, Parameter value)
{
    if (index < 0 || index >= static_cast<int>(byParameter.size()) || byParameter[static_cast<std::size_t>(index)].empty())
        return;
    std::lock_guard<std::mutex> guard(ring->WriterMutex());
    int slot;
    ring->BeginWrite(slot);
    lists[static_cast<std::size_t>(slot)].Put(index, value);
    ring->EndWrite();
}

void MAFMediator::BeginBatch()
{
    std::lock_guard<std::mutex> guard(ring->WriterMutex());
    if (inBatch)
        return;
    int slot;
    ring->BeginWrite(slot);
    inBatch = true;
}

void MAFMediator::EndBatch()
{
    // A batch that began before this mediator was connected ends without a write of ours.
    std::lock_guard<std::mutex> guard(ring->WriterMutex());
    if (!inBatch)
        return;
    inBatch = false;
    ring->EndWrite();
}

void MAFMediator::Apply()
{
    int slot;
    if (ring->BeginRead(slot)) {
        ChangeList& list = lists[static_cast<std::size_t>(slot)];
        int index;
        Parameter value;
        while (list.Next(index, value)) {
            for (MAFParamMediator* mediator : byParameter[static_cast<std::size_t>(index)])
                mediator->OnParameter(index, value);
        }
        ring->EndRead();
    }
    if (dirty.load(std::memory_order_relaxed) && dirty.exchange(false, std::memory_order_acq_rel)) {
        for (MAFParamMediator* mediator : eventList)
            mediator->Poll();
    }
}

void MAFMediator::Poll()
{
    for (MAFParamMediator* mediator : pollList)
        mediator->Poll();
}

void MAFMediator::OnValue(int index, Parameter value)
{
    document->SetParameter(index, value, DocView::SourceEngine);
}

}  // namespace OV::CFW::DocViewUtils
