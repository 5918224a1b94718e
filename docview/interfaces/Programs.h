#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"

#include <string>

class TiXmlElement;

namespace OV::CFW::DocView {

class ProgramsProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(ProgramsProfile); }
    virtual int GetProgramCount() const = 0;
};

// The host's programs, kept as XML elements; one of them is live in the document. Main thread.
class Programs : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(Programs); }
    virtual const ProgramsProfile* GetProfile() const = 0;
    virtual void SetCurrent(int index) = 0;
    virtual int GetCurrent() const = 0;
    virtual void SetName(int index, const std::string& name) = 0;
    virtual std::string GetName(int index) const = 0;
    // An element not named "Program" is ignored.
    virtual void LoadProgram(int index, const TiXmlElement& element) = 0;
    // Replaces `element` by the "Program" element of that program.
    virtual void SaveProgram(int index, TiXmlElement& element) = 0;
    // An element not named "Bank" is ignored.
    virtual void LoadBank(const TiXmlElement& element) = 0;
    // Renames `element` to "Bank" and appends one "Program" per program.
    virtual void SaveBank(TiXmlElement& element) = 0;
    virtual void Copy(int source, int target) = 0;
};

}  // namespace OV::CFW::DocView
