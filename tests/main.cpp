// Runs all tests once at every processor level.
#include "AtLevels.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

class AtEachLevel : public testing::EmptyTestEventListener {
    void OnTestIterationStart(const testing::UnitTest&, int iteration) override {
        useLevel(levels()[std::size_t(iteration) % levels().size()]);
        std::printf("At level %s\n", currentLevel().c_str());
    }
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed()) std::printf("at level %s\n", currentLevel().c_str());
    }
};

}  // namespace

int main(int count, char** arguments) {
    testing::FLAGS_gtest_repeat = int(levels().size());
    testing::InitGoogleTest(&count, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new AtEachLevel);
    return RUN_ALL_TESTS();
}
