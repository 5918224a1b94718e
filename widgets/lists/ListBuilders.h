#pragma once

#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

// The builders of the lists' layout elements, one per element name. A list needs a font to
// show its text ("UnselectedFont", or "FontN" in some "ListItemStyle" of the "2" family);
// without one there is no widget. Each list reads its "Item" children, nested for trees, with
// "Text" or the cells "Text0", "Text1", ... (the "2" family adds "Icon" and "StyleIndex").
GUI::Widget* BuildTextList(ElementContext& context);
GUI::Widget* BuildMultiTextList(ElementContext& context);
GUI::Widget* BuildTextTree(ElementContext& context);
GUI::Widget* BuildFolderTree(ElementContext& context);
GUI::Widget* BuildTextList2(ElementContext& context);
GUI::Widget* BuildMultiTextList2(ElementContext& context);
GUI::Widget* BuildTextTree2(ElementContext& context);

}  // namespace OV::CFW::Widgets
