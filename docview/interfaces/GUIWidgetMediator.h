#pragma once

#include "docview/interfaces/ParameterInfo.h"

namespace OV::CFW::DocView {

// The link between one widget of an editor and one document row. The document's value comes in
// through the setter of the row's type; the user's changes go out through the Listener.
// Main thread only.
class GUIWidgetMediator {
public:
    // What a mediator tells of its widget; GUIMediator implements it over the document.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual const ParameterInfo& GetParameterInfo(int row) = 0;
        virtual void OnBool(int row, bool value) = 0;
        virtual void OnInteger(int row, int value) = 0;
        virtual void OnEnum(int row, int value) = 0;
        virtual void OnFloat(int row, float value) = 0;
        // The user touched the widget of `row` (a press on a knob).
        virtual void NotifyParameter(int row) = 0;
    };

    virtual ~GUIWidgetMediator() = default;
    // The document row.
    virtual int GetParameter() const = 0;
    virtual void SetBool(bool value) = 0;
    virtual void SetInteger(int value) = 0;
    virtual void SetEnum(int value) = 0;
    virtual void SetFloat(float value) = 0;
};

}  // namespace OV::CFW::DocView
