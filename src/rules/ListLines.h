// The text of every line of the main window's lists and of the pallet combo box. The lines
// carry no item data: handlers read the leading number back with SeqOfLine.
#pragma once

#include <cstddef>
#include <string>

#include "app/CKestoApp.h"

namespace kesto {

// Bytes of a part's name in the list lines; a character that does not fit whole is left out.
inline constexpr size_t kListNameColumn = 32;

// "P " / "P-" / "  ": P for parts bound for the pallets or set aside, '-' while pieces are missing.
std::string StateMark(const PartsInfo& part);

std::string AllPartsLine(const PartsInfo& part);
std::string SmallBoxLine(const PartsInfo& part);
std::string ToriokiLine(const PartsInfo& part);
std::string ScheduleLine(const CKestoApp& app, const KouteiInfo& koutei);
std::string PalletSelectLine(const std::string& prefix, int number);

// Which lists show a part.
bool InSmallBox(const PartsInfo& part, int code);
bool InTorioki(const PartsInfo& part);
// A part bound for the pallets whose placed pieces are not its quantity.
bool LeftShort(const PartsInfo& part);
// A part left short: Seq, Code, pieces placed and quantity.
std::string ShortLine(const PartsInfo& part);

// The number a line starts with (atol).
int32_t SeqOfLine(const std::string& line);

}  // namespace kesto
