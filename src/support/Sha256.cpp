#include "support/Sha256.h"

#include <algorithm>
#include <cstring>

namespace kesto {

namespace {

constexpr std::array<uint32_t, 64> kRoundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::array<uint32_t, 8> kInitialState = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

constexpr uint32_t RotateRight(uint32_t x, int n) {
    return (x >> n) | (x << (32 - n));
}

}  // namespace

Sha256::Sha256() : state_(kInitialState) {}

void Sha256::Compress(const uint8_t* block) {
    std::array<uint32_t, 64> w{};
    for (int t = 0; t < 16; ++t) {
        w[t] = (uint32_t{block[4 * t]} << 24) | (uint32_t{block[4 * t + 1]} << 16) |
               (uint32_t{block[4 * t + 2]} << 8) | uint32_t{block[4 * t + 3]};
    }
    for (int t = 16; t < 64; ++t) {
        const uint32_t s0 =
            RotateRight(w[t - 15], 7) ^ RotateRight(w[t - 15], 18) ^ (w[t - 15] >> 3);
        const uint32_t s1 =
            RotateRight(w[t - 2], 17) ^ RotateRight(w[t - 2], 19) ^ (w[t - 2] >> 10);
        w[t] = w[t - 16] + s0 + w[t - 7] + s1;
    }
    uint32_t a = state_[0], b = state_[1], c = state_[2], d = state_[3];
    uint32_t e = state_[4], f = state_[5], g = state_[6], h = state_[7];
    for (int t = 0; t < 64; ++t) {
        const uint32_t sum1 = RotateRight(e, 6) ^ RotateRight(e, 11) ^ RotateRight(e, 25);
        const uint32_t choose = (e & f) ^ (~e & g);
        const uint32_t t1 = h + sum1 + choose + kRoundConstants[t] + w[t];
        const uint32_t sum0 = RotateRight(a, 2) ^ RotateRight(a, 13) ^ RotateRight(a, 22);
        const uint32_t majority = (a & b) ^ (a & c) ^ (b & c);
        const uint32_t t2 = sum0 + majority;
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    state_[0] += a;
    state_[1] += b;
    state_[2] += c;
    state_[3] += d;
    state_[4] += e;
    state_[5] += f;
    state_[6] += g;
    state_[7] += h;
}

void Sha256::Update(std::string_view bytes) {
    if (bytes.empty())
        return;
    const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
    size_t left = bytes.size();
    totalBytes_ += left;
    if (used_ > 0) {
        const size_t take = std::min(left, block_.size() - used_);
        std::memcpy(block_.data() + used_, data, take);
        used_ += take;
        data += take;
        left -= take;
        if (used_ < block_.size())
            return;
        Compress(block_.data());
        used_ = 0;
    }
    // Whole blocks straight from the input, without copying them first.
    for (; left >= block_.size(); data += block_.size(), left -= block_.size())
        Compress(data);
    if (left > 0)
        std::memcpy(block_.data(), data, left);
    used_ = left;
}

std::array<uint8_t, 32> Sha256::Finish() {
    const uint64_t bitLength = totalBytes_ * 8;
    // A one bit, zeros up to 56 bytes into a block, then the length in bits, big-endian.
    block_[used_++] = 0x80;
    if (used_ > 56) {
        std::fill(block_.begin() + static_cast<std::ptrdiff_t>(used_), block_.end(), 0);
        Compress(block_.data());
        used_ = 0;
    }
    std::fill(block_.begin() + static_cast<std::ptrdiff_t>(used_), block_.begin() + 56, 0);
    for (int i = 0; i < 8; ++i)
        block_[56 + i] = static_cast<uint8_t>(bitLength >> (56 - 8 * i));
    Compress(block_.data());
    used_ = 0;
    std::array<uint8_t, 32> digest{};
    for (int i = 0; i < 8; ++i) {
        digest[4 * i] = static_cast<uint8_t>(state_[i] >> 24);
        digest[4 * i + 1] = static_cast<uint8_t>(state_[i] >> 16);
        digest[4 * i + 2] = static_cast<uint8_t>(state_[i] >> 8);
        digest[4 * i + 3] = static_cast<uint8_t>(state_[i]);
    }
    return digest;
}

std::string ToHex(const std::array<uint8_t, 32>& digest) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * digest.size());
    for (const uint8_t byte : digest) {
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 0x0f];
    }
    return hex;
}

std::string Sha256Hex(std::string_view bytes) {
    Sha256 hash;
    hash.Update(bytes);
    return ToHex(hash.Finish());
}

}  // namespace kesto
