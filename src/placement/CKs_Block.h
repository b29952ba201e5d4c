// Cuts the pallet area of every process into numbered block cells.
#pragma once

#include "app/CKestoApp.h"

namespace kesto {

class CKs_Block {
public:
    explicit CKs_Block(CKestoApp& app) : app_(app) {}
    virtual ~CKs_Block() = default;

    // Resolves each process's pallet (Mark), sizes the table (BlocksCapacity) and builds it.
    // 0 after confirmation message 1 when a process names no pallet, or when Build fails.
    int SetUp();
    // Fills app.Blocks from app.BlocksCapacity: 1 on success; 0 with 9101 / 9102.
    int Build();

private:
    CKestoApp& app_;
};

}  // namespace kesto
