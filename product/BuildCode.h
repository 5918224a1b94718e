#pragma once

#include <string>

namespace OV::Products::VN4 {

// Four characters from a date text in the form "Jul  7 2010": the last digit of the year, the
// month as a letter ("A" January to "L" December, "M" for no known month) and the day in two
// digits. "Jul  7 2010" gives "0G07".
std::string MakeBuildCode(const std::string& dateText);

}  // namespace OV::Products::VN4
