#pragma once

#include "docview/datafilter/FloatConverter.h"
#include "docview/interfaces/MAFWrapper.h"
#include "docview/interfaces/Parameter.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils {

// Joins document rows to one engine parameter: OnParameter turns a row's value into an engine
// value, Poll turns the engine value back into a row's value. Made by the Creator that a MAF
// profile lists; unusable until Attach.
//
// Threads: construction and Attach allocate, on the main thread (or on the audio thread when a
// model is switched there, with the audio path of this mediator idle). OnParameter and Poll run
// on the audio thread: no allocation, no lock; they do nothing while no wrapper is attached.
class MAFParamMediator {
public:
    // Where Poll sends what it reads.
    class Listener {
    public:
        virtual void OnValue(int index, DocView::Parameter value) = 0;

    protected:
        ~Listener() = default;
    };

    // The declaration of one mediator, held by a profile. Read-only: any thread.
    class Creator {
    public:
        virtual ~Creator() = default;
        // Allocates.
        virtual std::unique_ptr<MAFParamMediator> Create(Listener& listener) const = 0;
    };

    MAFParamMediator() = default;
    MAFParamMediator(const MAFParamMediator&) = delete;
    MAFParamMediator& operator=(const MAFParamMediator&) = delete;
    virtual ~MAFParamMediator() = default;

    // Null `wrapper` detaches. The engine name is built here, once.
    virtual void Attach(DocView::MAFWrapper* wrapper, const std::string& prefix) = 0;
    virtual int GetParameterCount() const = 0;
    // The document row of the i-th parameter; i < GetParameterCount().
    virtual int GetParameter(int i) const = 0;
    virtual void OnParameter(int index, DocView::Parameter value) = 0;
    virtual void Poll() = 0;
    // True for an output that is to be read once after the mediator is attached.
    virtual bool IsEvent() const { return false; }

    // The engine's name of `name` under `prefix`: either one alone when the other is empty,
    // else name + "_" + prefix ("Gain_3L" under "Module" is "Gain_3L_Module"). Allocates.
    static std::string MakeEngineName(const std::string& name, const std::string& prefix);
};

// The common part of the mediators of one row and one engine parameter.
class MAFParamMediatorRow : public MAFParamMediator {
public:
    void Attach(DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    int GetParameterCount() const override { return 1; }
    int GetParameter(int) const override { return row; }

protected:
    MAFParamMediatorRow(Listener& listener, int row, std::string name);
    // Audio thread: the engine's value, through the name resolved at the first read; false
    // while detached.
    bool ReadEngine(float& value);
    void Send(DocView::Parameter value) { listener.OnValue(row, value); }
    DocView::MAFWrapper* GetWrapper() const { return wrapper; }
    const std::string& GetEngineName() const { return engineName; }

private:
    Listener& listener;
    int row;
    std::string name;
    DocView::MAFWrapper* wrapper = nullptr;
    std::string engineName;
    DocView::MAFWrapper::ResolvedName resolved;
    bool isResolved = false;
};

// A bool row as one of two engine values, or one of two engine state texts.
class MAFParamMediatorBool : public MAFParamMediatorRow {
public:
    class Creator : public MAFParamMediator::Creator {
    public:
        Creator(int row, std::string name, float offValue = 0.0f, float onValue = 1.0f);
        Creator(int row, std::string name, std::string offText, std::string onText);
        std::unique_ptr<MAFParamMediator> Create(Listener& listener) const override;

        int row;
        std::string name;
        float offValue;
        float onValue;
        std::string offText;
        std::string onText;
        bool usesText;
    };

    MAFParamMediatorBool(Listener& listener, const Creator& creator);
    void OnParameter(int index, DocView::Parameter value) override;
    // Sends true exactly when the engine value equals onValue.
    void Poll() override;

private:
    const Creator settings;
};

// An enum (or bool) row as an engine value: the index itself, an entry of `values`, or an
// entry of `texts`; an index past the end of the list takes its last entry.
class MAFParamMediatorEnum : public MAFParamMediatorRow {
public:
    class Creator : public MAFParamMediator::Creator {
    public:
        Creator(int row, std::string name);
        Creator(int row, std::string name, std::vector<float> values);
        Creator(int row, std::string name, std::vector<std::string> texts);
        std::unique_ptr<MAFParamMediator> Create(Listener& listener) const override;

        int row;
        std::string name;
        std::vector<float> values;
        std::vector<std::string> texts;
        // Engine value, truncated, to index: filled from `values`, the first index winning.
        std::map<int, std::uint32_t> indices;
    };

    MAFParamMediatorEnum(Listener& listener, const Creator& creator);
    void OnParameter(int index, DocView::Parameter value) override;
    // The engine value, truncated: the index itself without lists, else looked up in
    // `indices`. Nothing is sent for a value that maps to no index.
    void Poll() override;

private:
    const Creator settings;
};

// A float row as an engine value through a converter (the identity unless given).
class MAFParamMediatorFloat : public MAFParamMediatorRow {
public:
    class Creator : public MAFParamMediator::Creator {
    public:
        Creator(int row, std::string name);
        Creator(int row, std::string name, const DataFilter::FloatConverter& converter);
        std::unique_ptr<MAFParamMediator> Create(Listener& listener) const override;

        int row;
        std::string name;
        std::unique_ptr<DataFilter::FloatConverter> converter;
    };

    MAFParamMediatorFloat(Listener& listener, const Creator& creator);
    // The engine gets converter.ToNormalized(value).
    void OnParameter(int index, DocView::Parameter value) override;
    // The row gets converter.ToValue(engine value).
    void Poll() override;

private:
    std::unique_ptr<DataFilter::FloatConverter> converter;
};

// Three bool rows (disable, bypass, mute) as the engine's "Process" state text. Priority:
// disabled gives "Stop", else muted "Mute", else bypassed "Bypass", else "Normal". A change
// that the higher flags hide is only stored.
class MAFParamMediatorProcess : public MAFParamMediator {
public:
    class Creator : public MAFParamMediator::Creator {
    public:
        Creator(int disableRow, int bypassRow, int muteRow);
        std::unique_ptr<MAFParamMediator> Create(Listener& listener) const override;

        int disableRow;
        int bypassRow;
        int muteRow;
    };

    explicit MAFParamMediatorProcess(const Creator& creator);
    void Attach(DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    int GetParameterCount() const override { return 3; }
    int GetParameter(int i) const override;
    void OnParameter(int index, DocView::Parameter value) override;
    void Poll() override {}

private:
    void Send();

    int rows[3];
    bool disabled = false;
    bool bypassed = false;
    bool muted = false;
    DocView::MAFWrapper* wrapper = nullptr;
    std::string engineName;
};

}  // namespace OV::CFW::DocViewUtils
