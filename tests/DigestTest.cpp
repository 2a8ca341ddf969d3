// Every blend and effect over bitmaps of all widths from 0 to 40, and of those that are worked on in pieces, tight and padded;
// the same digests on every compiler, level and processor. With FENNIC_RECORD set, the table is written instead: for a change
// of bytes that is meant.
#include "Calls.h"
#include "Digests.h"
#include "Listed.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>
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

std::uint64_t digestOf(const Listed& operation, DigestTable::Column kind) {
    Digest digest;
    Random random(0);
    std::vector<std::uint32_t> widths{255, 300, 513, 1100};
    if (kind != DigestTable::wide) {
        widths.resize(41);
        std::iota(widths.begin(), widths.end(), 0);
    }
    for (std::uint32_t width : widths)
        for (std::uint32_t padding : {0u, 12u}) {
            FakeBitmap base(width, 5, padding), layer(width, 5, 20 - padding);
            for (std::uint32_t y = 0; y < 5; ++y)
                for (std::uint32_t x = 0; x < width; ++x) {
                    base.set(x, y, pixel(random, kind));
                    layer.set(x, y, pixel(random, kind));
                }
            EXPECT_EQ(operation.run(base, layer), 0) << operation.name;
            EXPECT_TRUE(operation.isPacked() ? base.endsIntact() : base.guardsIntact())
                << operation.name << ", width " << width;
            for (std::uint32_t y = 0; y < 5; ++y)
                for (std::uint32_t x = 0; x < width; ++x) digest.add(base.get(x, y));
        }
    releaseArrays();
    return digest.value();
}

TEST(Digests, AreThoseOfTheTable) {
    DigestTable table(FENNIC_DIGESTS);
    const bool record = std::getenv("FENNIC_RECORD");
    std::vector<Listed> operations = listedBlends();
    operations.insert(operations.end(), listedEffects().begin(), listedEffects().end());
    for (const Listed& operation : operations)
        for (auto kind : {DigestTable::valid, DigestTable::arbitrary, DigestTable::extreme, DigestTable::wide}) {
            const std::string digest = DigestTable::text(digestOf(operation, kind));
            if (record)
                table.at(operation.name, kind) = digest;
            else
                EXPECT_EQ(digest, table.at(operation.name, kind)) << operation.name << ", column " << kind;
        }
    EXPECT_EQ(table.size(), operations.size());
    if (record) table.save();
}

}  // namespace
