// What a job is made of, reduced to one name: the SHA-256 of its command-line values and the
// bytes of its input files, in the order they are added. The same job started again gets the
// same name; a job that differs in any value or byte gets another.
//
// Framing: each item is hashed as one ASCII header line, then its bytes as they are:
//   value <n>\n<the n bytes of the value>
//   file <n>\n<the n bytes of the file>
// where <n> is the item's length in bytes in decimal, without leading zeros. The header says
// where an item ends and whether it is a value or a file, so no two different sequences of
// items hash the same bytes: moving a byte from one value to the next, or turning a value into
// a file of the same bytes, changes the name.
#pragma once

#include <string>
#include <string_view>

#include "support/Sha256.h"

namespace kesto {

class JobIdentity {
  public:
    // A value of the command line.
    void AddValue(std::string_view value);
    // The bytes of an input file.
    void AddFile(std::string_view bytes);
    // The name of the items added so far: 64 lowercase hexadecimal digits. The identity stays
    // open: more items may follow, and Hex then names them all.
    std::string Hex() const;

  private:
    void Add(std::string_view kind, std::string_view bytes);

    Sha256 hash_;
};

}  // namespace kesto
