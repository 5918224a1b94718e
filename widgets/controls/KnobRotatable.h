#pragma once

#include "widgets/controls/Knob.h"

namespace OV::CFW::Widgets {

// A knob with a second value, a rotation from 0 to 1, shown by turning the strip's frame:
// dragging up and down moves the value as a knob's, dragging sideways the rotation. Shift at
// the press drags slowly along one axis only, the one that the first move follows most. A
// Control-click resets both. Window thread only.
class KnobRotatable : public Knob {
public:
    boost::signals2::signal<void(KnobRotatable*, float)> rotationChanged;

    // As a knob's, with a slow mode factor of 2; the rotation starts at 0, its default at 0.5.
    KnobRotatable(GUI::Widget& parent, const Rect& rect, Graphics::Image* strip, int frames, std::vector<int> frameList = {});

    // Within 0 to 1; emits and repaints on a change only.
    void setRotation(float v);
    float getRotation() const { return rotation; }
    void setDefaultRotation(float v) { defaultRotation = v; }
    // The angles in degrees at rotation 0 and at 1.
    void setRotationRange(float minDegrees, float maxDegrees);
    // Pixels of sideways drag for a degree.
    void setPixelPerDegree(float v) { pixelPerDegree = v; }
    // The point of the frame to turn around, and where in the widget it lands.
    void setCenters(const Point& rotation, const Point& destination);

protected:
    void handleMouseDown(const Point& point, int modifiers) override;
    void handleMouseMoved(const Point& point) override;
    void handleMouseUp() override;
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    enum Axis { NoAxis = 0, Horizontal = 1, Vertical = 2 };

    float minValueRotation = 0.0f;
    float maxValueRotation = 1.0f;
    Point centerRotation;
    Point centerDestination;
    float pixelPerDegree = 0.0f;
    float rotation = 0.0f;
    float defaultRotation = 0.5f;
    float dragStartRotation = 0.0f;
    Axis dragAxis = NoAxis; // the one axis of a slow drag, once its first move chose it
};

}  // namespace OV::CFW::Widgets
