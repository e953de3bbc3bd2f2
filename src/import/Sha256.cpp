// SPDX-License-Identifier: Apache-2.0
#include "Sha256.h"

#include <QCryptographicHash>
#include <QIODevice>
#include <QtEndian>
#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define VERIDON_SHA_NI 1
#endif

namespace {

#ifdef VERIDON_SHA_NI

alignas(16) constexpr std::uint32_t roundConstants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// Runs blocks 64-byte blocks through the compression function with the SHA instructions. state
// holds a, b, ..., h.
__attribute__((target("sha,sse4.1,ssse3"))) void compressBlocks(std::uint32_t* state, const unsigned char* data,
                                                                std::size_t blocks) {
    const __m128i byteSwap = _mm_set_epi64x(0x0c0d0e0f08090a0bLL, 0x0405060700010203LL);
    // The instructions keep the state as the word pairs ABEF and CDGH.
    __m128i cdab = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0xB1);
    __m128i efgh = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state + 4)), 0x1B);
    __m128i abef = _mm_alignr_epi8(cdab, efgh, 8);
    __m128i cdgh = _mm_blend_epi16(efgh, cdab, 0xF0);
    for (; blocks > 0; --blocks, data += 64) {
        const __m128i abefBefore = abef;
        const __m128i cdghBefore = cdgh;
        // w[i & 3] holds the schedule's words 4i-16 .. 4i-13 when group i begins.
        __m128i w[4];
        for (int i = 0; i < 16; ++i) {
            __m128i words;
            if (i < 4) {
                words = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + 16 * i)), byteSwap);
            } else {
                const __m128i partial = _mm_add_epi32(_mm_sha256msg1_epu32(w[i & 3], w[(i + 1) & 3]),
                                                      _mm_alignr_epi8(w[(i + 3) & 3], w[(i + 2) & 3], 4));
                words = _mm_sha256msg2_epu32(partial, w[(i + 3) & 3]);
            }
            w[i & 3] = words;
            __m128i message =
                _mm_add_epi32(words, _mm_load_si128(reinterpret_cast<const __m128i*>(roundConstants + 4 * i)));
            cdgh = _mm_sha256rnds2_epu32(cdgh, abef, message);
            message = _mm_shuffle_epi32(message, 0x0E);
            abef = _mm_sha256rnds2_epu32(abef, cdgh, message);
        }
        abef = _mm_add_epi32(abef, abefBefore);
        cdgh = _mm_add_epi32(cdgh, cdghBefore);
    }
    const __m128i feba = _mm_shuffle_epi32(abef, 0x1B);
    const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xB1);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state), _mm_blend_epi16(feba, dchg, 0xF0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state + 4), _mm_alignr_epi8(dchg, feba, 8));
}

bool hasShaInstructions() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("sha") && __builtin_cpu_supports("sse4.1");
}

bool sha256WithInstructions(QIODevice& device, QByteArray& digest) {
    std::uint32_t state[8] = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    constexpr qint64 chunk = 1 << 20;
    QByteArray buffer(chunk + 128, Qt::Uninitialized);
    auto* bytes = reinterpret_cast<unsigned char*>(buffer.data());
    qint64 pending = 0; // bytes at the start of buffer not yet hashed (less than a block)
    quint64 total = 0;
    for (;;) {
        const qint64 got = device.read(buffer.data() + pending, chunk);
        if (got < 0)
            return false;
        if (got == 0)
            break;
        total += quint64(got);
        pending += got;
        const qint64 whole = pending / 64;
        compressBlocks(state, bytes, std::size_t(whole));
        std::memmove(bytes, bytes + whole * 64, std::size_t(pending - whole * 64));
        pending -= whole * 64;
    }
    // The padding: a 1 bit, zeros, then the length in bits, to a whole number of blocks.
    bytes[pending++] = 0x80;
    const qint64 padded = pending <= 56 ? 64 : 128;
    std::memset(bytes + pending, 0, std::size_t(padded - pending));
    qToBigEndian<quint64>(total * 8, bytes + padded - 8);
    compressBlocks(state, bytes, std::size_t(padded / 64));
    QByteArray result(32, Qt::Uninitialized);
    for (int i = 0; i < 8; ++i)
        qToBigEndian<quint32>(state[i], result.data() + 4 * i);
    digest = result;
    return true;
}

#endif

} // namespace

bool sha256Of(QIODevice& device, QByteArray& digest) {
#ifdef VERIDON_SHA_NI
    static const bool instructions = hasShaInstructions();
    if (instructions)
        return sha256WithInstructions(device, digest);
#endif
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!hash.addData(&device))
        return false;
    digest = hash.result();
    return true;
}
