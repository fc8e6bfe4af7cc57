#include "platform/media/output/SoundOutput.h"

#include <gtest/gtest.h>

namespace {

// Joins the players' threads before the process ends, as the application does.
struct ThreadsEnd : testing::Environment
{
    void TearDown() override { orvel::joinOutputQueues(); }
};
const testing::Environment *const threadsEnd = testing::AddGlobalTestEnvironment(new ThreadsEnd);

} // namespace
