#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Font;
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A matrix of cells, of which a window of a fixed number of columns and rows shows: each cell
// on or off, with a name, a text and a fader level shown as a bar along its foot, one of them
// selected; names and texts are in the border's colour. Arrows at the sides, where the matrix goes on beyond the window, scroll it by a
// cell when clicked. A click on a cell tells which; what it means is the caller's. Window thread
// only.
class QM3Matrix : public GUI::Widget {
public:
    boost::signals2::signal<void(QM3Matrix*, int, int)> cellClicked; // column, row

    struct Cell {
        std::string name;
        std::string text;
        bool on = false;
        float fader = 0.0f; // 0 to 1
    };
    // The fonts and pictures are not owned, may be null, and must outlive the widget.
    struct Look {
        Graphics::Font* nameFont = nullptr;
        Graphics::Font* textFont = nullptr;
        Graphics::Color faderColor = 0xFF80C0FF;
        Graphics::Color borderColor = 0xFF000000;
        Graphics::Color offCellColor = 0xFF303030;
        Graphics::Color onCellColor = 0xFF307030;
        Graphics::Color selectedCellColor = 0xFF505090;
        Point cellsShown{4, 4};
        Graphics::Image* arrowLeft = nullptr;
        Graphics::Image* arrowRight = nullptr;
        Graphics::Image* arrowUp = nullptr;
        Graphics::Image* arrowDown = nullptr;
    };

    // The matrix starts as large as the window on it.
    QM3Matrix(GUI::Widget& parent, const Rect& rect, const Look& look);

    // Keeps the cells that remain inside; new ones are off and empty.
    void setMatrixSize(int columns, int rows);
    Point getMatrixSize() const { return size; }
    // A cell outside the matrix is ignored.
    void setCell(int column, int row, const Cell& cell);
    const Cell* getCell(int column, int row) const;
    // (-1, -1) for none; scrolls it into view.
    void setSelected(int column, int row);
    Point getSelected() const { return selected; }
    // The top-left cell shown, limited to what the matrix allows.
    void scrollTo(int column, int row);
    Point getScroll() const { return scroll; }
    // The cell at `point` (its column and row in the matrix), or (-1, -1).
    Point cellAt(const Point& point) const;

private:
    // Where the cells go: the widget less the margins of the arrows' pictures.
    Rect grid() const;
    Point cellSize() const;
    void click(const Point& point);
    void paint(Graphics::Painter& painter, const Rect& clip);

    Look look;
    Point size;
    std::vector<Cell> cells; // row by row
    Point selected{-1, -1};
    Point scroll;
};

}  // namespace OV::CFW::Widgets
