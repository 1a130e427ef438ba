#include <gtest/gtest.h>

#include <utility>

#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "host/session/Host.h"

namespace {

// Core suites are served under their versions, nothing under another name or version.
TEST(SuiteRegistry, CoreSuitesAreServedUnderTheirVersionsOnly) {
    host::Host session;
    const SPBasicSuite* pica = session.pica_basic();
    const std::pair<const char*, int32> expected[] = {
        {kPFWorldSuite, kPFWorldSuiteVersion2},         {kPFSampling8Suite, kPFSampling8SuiteVersion1},
        {kPFSampling16Suite, kPFSampling16SuiteVersion1}, {kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1},
        {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3}, {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5}};
    for (const auto& [name, version] : expected) {
        const void* suite = nullptr;
        EXPECT_EQ(pica->AcquireSuite(name, version, &suite), 0) << name;
        EXPECT_NE(suite, nullptr) << name;
        EXPECT_EQ(pica->ReleaseSuite(name, version), 0) << name;
    }
    for (const auto& [name, version] : {std::pair{"PF No Such Suite", 1}, std::pair{kPFWorldSuite, 1}}) {
        const void* suite = reinterpret_cast<const void*>(0x1);
        EXPECT_EQ(pica->AcquireSuite(name, version, &suite), kSPSuiteNotFoundError) << name;
        EXPECT_EQ(suite, nullptr);
    }
    EXPECT_EQ(pica->ReleaseSuite("PF No Such Suite", 1), kSPSuiteNotFoundError);
    EXPECT_EQ(session.leaks(), "");
}

TEST(SuiteRegistry, UnreleasedSuiteIsReportedByName) {
    host::Host session;
    const SPBasicSuite* pica = session.pica_basic();
    const void* suite = nullptr;
    ASSERT_EQ(pica->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2, &suite), 0);
    ASSERT_EQ(pica->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2, &suite), 0);
    ASSERT_EQ(pica->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2), 0);
    EXPECT_EQ(session.counters().live(host::Resource::Suite), 1);
    EXPECT_NE(session.leaks().find("PF World Suite v2"), std::string::npos) << session.leaks();
    ASSERT_EQ(pica->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2), 0);
    // A release without an acquisition is an error, and a problem in the report.
    EXPECT_NE(pica->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2), 0);
    EXPECT_NE(session.leaks().find("not held"), std::string::npos);
}

}  // namespace
