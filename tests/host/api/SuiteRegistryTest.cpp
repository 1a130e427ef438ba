#include <gtest/gtest.h>

#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "host/session/Host.h"

namespace {

TEST(SuiteRegistry, UnknownNameOrVersionIsNotFound) {
    host::Host session;
    const SPBasicSuite* pica = session.pica_basic();
    const void* suite = reinterpret_cast<const void*>(0x1);
    EXPECT_EQ(pica->AcquireSuite("PF No Such Suite", 1, &suite), kSPSuiteNotFoundError);
    EXPECT_EQ(suite, nullptr);
    suite = reinterpret_cast<const void*>(0x1);
    EXPECT_EQ(pica->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion1, &suite), kSPSuiteNotFoundError);
    EXPECT_EQ(suite, nullptr);
    EXPECT_EQ(pica->ReleaseSuite("PF No Such Suite", 1), kSPSuiteNotFoundError);
    EXPECT_EQ(session.leaks(), "");
}

TEST(SuiteRegistry, CoreSuitesAreServedUnderTheirVersions) {
    host::Host session;
    const SPBasicSuite* pica = session.pica_basic();
    const struct {
        const char* name;
        int32 version;
    } expected[] = {{kPFWorldSuite, kPFWorldSuiteVersion2},
                    {kPFSampling8Suite, kPFSampling8SuiteVersion1},
                    {kPFSampling16Suite, kPFSampling16SuiteVersion1},
                    {kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1},
                    {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3},
                    {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5}};
    for (const auto& e : expected) {
        const void* suite = nullptr;
        EXPECT_EQ(pica->AcquireSuite(e.name, e.version, &suite), 0) << e.name;
        EXPECT_NE(suite, nullptr) << e.name;
        EXPECT_EQ(pica->ReleaseSuite(e.name, e.version), 0) << e.name;
    }
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

TEST(SuiteRegistry, OtherPartsCanRegisterTables) {
    host::Host session;
    static const int table = 42;
    session.registry().add("AEGP Test Suite", 7, &table);
    const void* suite = nullptr;
    ASSERT_EQ(session.pica_basic()->AcquireSuite("AEGP Test Suite", 7, &suite), 0);
    EXPECT_EQ(suite, &table);
    EXPECT_EQ(session.pica_basic()->AcquireSuite("AEGP Test Suite", 8, &suite), kSPSuiteNotFoundError);
    session.pica_basic()->ReleaseSuite("AEGP Test Suite", 7);
}

}  // namespace
