// Every blend and effect over bitmaps of all widths from 0 to 40, and of those that are worked on in pieces, tight and padded;
// the same digests on every compiler, level and processor. With FENNIC_RECORD set, the table is written instead: for a change
// of bytes that is meant.
#include "Digests.h"
#include "Random.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <numeric>
#include <set>

namespace {

constexpr const char* columns[] = {"valid", "arbitrary", "extreme", "domain", "wide"};

std::uint32_t pixel(Random& random, DigestTable::Column kind) {
    static constexpr unsigned extremes[] = {0, 1, 2, 127, 128, 129, 253, 254, 255};
    auto extreme = [&] { return extremes[random.below(9)]; };
    switch (kind) {
        case DigestTable::valid: {
            // Opaque and transparent pixels are as frequent as all others.
            const unsigned a = random.below(4) ? random.below(256) : 255 * random.below(2);
            auto channel = [&] { return random.below(a + 1); };
            const unsigned r = channel(), g = channel(), b = channel();
            return rgba(r, g, b, a);
        }
        case DigestTable::extreme: {
            const unsigned r = extreme(), g = extreme(), b = extreme(), a = extreme();
            return rgba(r, g, b, a);
        }
        case DigestTable::wide:
            return pixel(random, random.below(2) ? DigestTable::valid : DigestTable::arbitrary);
        default:
            return random.next();
    }
}

Walk bitmapsOf(DigestTable::Column kind) {
    return [=](const auto& isEnough) {
        Random random(0);
        std::vector<std::uint32_t> widths{255, 300, 513, 1100};
        if (kind != DigestTable::wide) {
            widths.resize(41);
            std::iota(widths.begin(), widths.end(), 0);
        }
        for (std::uint32_t width : widths)
            for (std::uint32_t padding : {0u, 12u}) {
                FakeBitmap base(width, 5, padding), layer(width, 5, padding + 8);
                for (std::uint32_t y = 0; y < 5; ++y)
                    for (std::uint32_t x = 0; x < width; ++x) {
                        base.set(x, y, pixel(random, kind));
                        layer.set(x, y, pixel(random, kind));
                    }
                if (isEnough(base, layer)) return;
            }
    };
}

std::string digestOf(const WrittenCall& call, DigestTable::Column kind) {
    Digest digest;
    bitmapsOf(kind)([&](FakeBitmap base, FakeBitmap layer) {
        const std::uint32_t width = base.info.width;
        const double result = run(call, base, layer);
        const auto bits = std::bit_cast<std::uint64_t>(result);
        if (!call.call->isStatus()) digest.add(bits ^ bits >> 32);
        EXPECT_TRUE(!call.call->isStatus() || result == 0) << call.text;
        EXPECT_TRUE(call.call->has("packed") ? base.endsIntact() : base.guardsIntact()) << call.text << ", width " << width;
        for (std::uint32_t y = 0; y < 5; ++y)
            for (std::uint32_t x = 0; x < width; ++x) digest.add(base.get(x, y));
        return false;
    });
    releaseArrays();
    calls.clear();
    return digest.text();
}

TEST(Digests, AreThoseOfTheTable) {
    DigestTable table;
    const bool record = std::getenv("FENNIC_RECORD");
    std::set<std::string> operations;
    for (const WrittenCall& call : table.calls()) {
        operations.insert(call.call->name);
        for (auto kind : {DigestTable::valid, DigestTable::arbitrary, DigestTable::extreme, DigestTable::wide})
            for (bool leaves : call.call->leavings()) {
                leavesArrays = leaves;
                const std::string digest = digestOf(call, kind);
                std::string& expected = table.at(call.text, kind);
                if (record)
                    expected = digest;
                else if (digest != expected)
                    ADD_FAILURE() << call.text << ", column " << columns[kind] << (leaves ? "" : ", leaving no arrays") << ": "
                                  << digest << ", recorded is " << expected << "\n"
                                  << explanation(call, bitmapsOf(kind));
            }
    }
    for (const Call& call : allCalls())
        EXPECT_TRUE(call.bitmaps == 0 || call.isAbort() || operations.count(call.name)) << call.name << " has no digest";
    if (record) table.save();
}

}  // namespace
