// The one way the tests put a stack into a job: every number is named at the call, as in
// AddStack(app, part, {.Block = 2, .Pieces = 4, .X = 500.25, .Y = 40}), and braces refuse a
// double for a count or a block, so no two numbers can trade places unnoticed.
#pragma once

#include <cstdint>

#include "app/CKestoApp.h"

namespace kesto::test {

// The fields of a new stack; what is not named keeps the value a fresh record has.
struct StackFields {
    int32_t Block = -1;  // index into the block table; -1 stands in no block
    int32_t Pieces = 0;
    double X = 0;
    double Y = 0;
    uint8_t Corner = 0;  // kCorner...
    int32_t Level = 0;
    // Also adds the pieces to the part's PiecesPlaced, as reading a job does.
    bool CountOnPart = false;
};

inline HaichiInfo& AddStack(CKestoApp& app, PartsInfo& part, const StackFields& fields) {
    HaichiInfo& stack = *app.AddHaichiInfo();
    stack.Part = &part;
    stack.BlockIndex = fields.Block;
    stack.Pieces = fields.Pieces;
    stack.X = fields.X;
    stack.Y = fields.Y;
    stack.Corner = fields.Corner;
    stack.Level = fields.Level;
    if (fields.CountOnPart)
        part.PiecesPlaced += fields.Pieces;
    return stack;
}

}  // namespace kesto::test
