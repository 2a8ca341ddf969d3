// Every blend and effect over bitmaps of all widths from 0 to 40, and of those that are worked on in pieces, tight and padded;
// the same digests on every compiler, level and processor. With FENNIC_RECORD set, the table is written instead: for a change
// of bytes that is meant.
#include "Calls.h"
#include "Digests.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>
#include <set>
#include <vector>

namespace {

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

std::uint64_t digestOf(const WrittenCall& call, DigestTable::Column kind) {
    Digest digest;
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
            EXPECT_EQ(call.run(base, layer), 0) << call.text();
            EXPECT_TRUE(call.isPacked() ? base.endsIntact() : base.guardsIntact()) << call.text() << ", width " << width;
            for (std::uint32_t y = 0; y < 5; ++y)
                for (std::uint32_t x = 0; x < width; ++x) digest.add(base.get(x, y));
        }
    releaseArrays();
    return digest.value();
}

TEST(Digests, AreThoseOfTheTable) {
    DigestTable table(FENNIC_DIGESTS);
    const bool record = std::getenv("FENNIC_RECORD");
    std::set<std::string> operations;
    for (const WrittenCall& call : table.calls()) {
        operations.insert(call.name());
        for (auto kind : {DigestTable::valid, DigestTable::arbitrary, DigestTable::extreme, DigestTable::wide}) {
            const std::string digest = DigestTable::text(digestOf(call, kind));
            if (record)
                table.at(call.text(), kind) = digest;
            else
                EXPECT_EQ(digest, table.at(call.text(), kind)) << call.text() << ", column " << kind;
        }
    }
    for (const Call& call : allCalls())
        EXPECT_TRUE(!call.isStatus() || call.isAbort || operations.count(call.name)) << call.name << " has no digest";
    if (record) table.save();
}

}  // namespace
