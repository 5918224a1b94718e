#include "product/BuildCode.h"

namespace OV::Products::VN4 {

std::string MakeBuildCode(const std::string& dateText)
{
    static const char* const months[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    char month = 'M';
    for (int i = 0; i < 12; ++i) {
        if (dateText.compare(0, 3, months[i]) == 0) {
            month = static_cast<char>('A' + i);
            break;
        }
    }
    const auto digit = [&](std::size_t at) {
        const char c = at < dateText.size() ? dateText[at] : '0';
        return c >= '0' && c <= '9' ? c : '0';
    };
    // "Mmm dd yyyy": day at 4 and 5 (a leading space for days below ten), year ends at 10.
    return {digit(10), month, digit(4), digit(5)};
}

}  // namespace OV::Products::VN4
