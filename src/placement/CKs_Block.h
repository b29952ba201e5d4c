// Cuts the pallet area of every process into numbered block cells.
#pragma once

#include "app/CKestoApp.h"

namespace kesto {

// Largest block table the builder allocates; a larger capacity counts as an allocation
// failure (9101) rather than an attempt to take all memory.
inline constexpr int32_t kMaxBlockCapacity = 4'000'000;

class CKs_Block {
  public:
    CKs_Block(CKestoApp& app, const Services& services) : app_(app), services_(services) {}
    virtual ~CKs_Block() = default;

    // Resolves each process's pallet (Mark), sizes the table (Blocks.Capacity()) and builds it.
    // Failed without a code after confirmation message 1 when a process names no pallet, or as
    // Build fails.
    Outcome SetUp();
    // Fills app.Blocks up to its capacity; failed with 9101 / 9102.
    Outcome Build();

  private:
    // The cells of one process on every pallet; failed with 9102 when the table is full.
    Outcome BuildKoutei(const KouteiInfo& koutei, const PalletInfo& pallet);

    CKestoApp& app_;
    Services services_;
};

}  // namespace kesto
