#pragma once

#include "engine/core/Environment.h"
#include "engine/core/Module.h"

#include <utility>
#include <vector>

namespace AudioEngine {

namespace ModuleStructuredDetails {

// Named owned values in insertion order; adding under a taken name deletes the old value first.
template <typename T>
class ModuleMap {
public:
    using Entry = std::pair<std::string, std::unique_ptr<T>>;

    T& Add(const std::string& name, std::unique_ptr<T> value)
    {
        for (auto it = entries.begin(); it != entries.end(); ++it) {
            if (it->first == name) {
                entries.erase(it);
                break;
            }
        }
        entries.emplace_back(name, std::move(value));
        return *entries.back().second;
    }
    T* Find(const std::string& name) const
    {
        for (const Entry& entry : entries) {
            if (entry.first == name)
                return entry.second.get();
        }
        return nullptr;
    }
    int Size() const { return static_cast<int>(entries.size()); }
    typename std::vector<Entry>::const_iterator begin() const { return entries.begin(); }
    typename std::vector<Entry>::const_iterator end() const { return entries.end(); }

private:
    std::vector<Entry> entries;
};

}  // namespace ModuleStructuredDetails

// A node that holds named children, runs them in order and wires them. It is the environment
// of its children.
class ModuleStructured : public Module, public EnvironmentLocal {
public:
    using Children = ModuleStructuredDetails::ModuleMap<Module>;

    using Module::Module;

    void Setup(Environment* environment) override;
    void Process() override;
    void Connect() override;
    void ResolvePorts() override;
    void BindPorts() override;
    void Dump(std::ostream& stream, const std::string& prefix) const override;
    void ApplyDefaults() override;
    void SampleRateChanged() override;
    void Reset() override;

    const Children& GetChildren() const { return children; }
    Module* GetChild(const std::string& name) const { return children.Find(name); }

protected:
    // Links every parameter and data block of every child as "<entry>_<child>".
    void CreateParameters() override;
    void SetEnvironment(Environment* environment) override { parent = environment; }
    virtual void CreateChildren() = 0;
    // The default chain: this module's inputs to the first child's, each child's outputs to the
    // next child's inputs, the last child's outputs to this module's outputs; pairwise in name
    // order.
    virtual void ConnectChildren();

    Module& AddChild(const std::string& name, std::unique_ptr<Module> child) { return children.Add(name, std::move(child)); }
    // Links every entry of `child` under its own name (single-child wrappers).
    void LinkChildEntries(Module& child);
    // An outer output over an inner port, or unconnected for the default chain to fill.
    AudioContainers::Output& AddOutputHierarchic(const std::string& name, AudioContainers::Port* inner = nullptr);

private:
    Children children;
};

}  // namespace AudioEngine
