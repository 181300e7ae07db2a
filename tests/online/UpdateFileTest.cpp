// The update file, the server's answer and the texture sets: what is taken, what is
// written back, and what is refused.
#include "online/OnlineFixture.h"

#include "online/HttpGet.h"
#include "online/TextureSets.h"
#include "online/UpdateCheck.h"
#include "online/UpdateFile.h"
#include "online/UpdateState.h"
#include "platform/UserStore.h"

#include <cstring>

namespace {

constexpr int64_t kNow = 1764000000;

std::string Stamp(int64_t at) { return "datestr:" + std::to_string(at) + ";"; }

} // namespace

TEST(UpdateFile, StampIsFreshForLessThanADayAndASecond) {
    EXPECT_FALSE(StampIsFresh("", kNow));
    EXPECT_FALSE(StampIsFresh("lastvers:2.1;", kNow));
    EXPECT_FALSE(StampIsFresh("datestr:soon;", kNow));
    EXPECT_FALSE(StampIsFresh(Stamp(kNow).c_str(), kNow));      // not before now
    EXPECT_FALSE(StampIsFresh(Stamp(kNow + 60).c_str(), kNow)); // a clock set back
    EXPECT_TRUE(StampIsFresh(Stamp(kNow - 1).c_str(), kNow));
    EXPECT_TRUE(StampIsFresh(Stamp(kNow - 86400).c_str(), kNow));
    EXPECT_FALSE(StampIsFresh(Stamp(kNow - 86401).c_str(), kNow));
    EXPECT_FALSE(StampIsFresh("datestr:99999999999;", kNow)); // past 32 bits
}

TEST(UpdateFile, VersionsAndAnswers) {
    EXPECT_FLOAT_EQ(ReadLatestVersion("x;lastvers:2.1;"), 2.1f);
    EXPECT_GT(ReadLatestVersion("lastvers:2.01;"), kProgramVersion);
    EXPECT_EQ(ReadLatestVersion("lastvers:2;"), kProgramVersion);
    EXPECT_EQ(ReadLatestVersion("lastvers:-3;"), 0.0f);
    EXPECT_EQ(ReadLatestVersion("lastvers:99999999999999999999999999;"), ReadLatestVersion("lastvers:999999999999;"));

    std::string body;
    EXPECT_TRUE(ReadAnswerBody(HttpAnswer("lastvers:2.1;set_uid:4;").c_str(), body));
    EXPECT_EQ(body, "lastvers:2.1;set_uid:4;");
    EXPECT_FALSE(ReadAnswerBody(HttpAnswer("lastvers:2.1;", "404 Not Found").c_str(), body));
    EXPECT_FALSE(ReadAnswerBody(HttpAnswer("lastvers:2.1;", "2000 OK").c_str(), body));
    EXPECT_FALSE(ReadAnswerBody("HTTP/1.1 200 OK\r\nlastvers:2.1;", body));              // headers never end
    EXPECT_FALSE(ReadAnswerBody(HttpAnswer("lastvers:2.").substr(0, 80).c_str(), body)); // cut in the number
    EXPECT_FALSE(ReadAnswerBody(HttpAnswer("set_uid:1;").c_str(), body));
    std::string cut = HttpAnswer("lastvers:2.1;set_uid:4;set_name:Rust;");
    EXPECT_FALSE(ReadAnswerBody(cut.substr(0, cut.size() - 5).c_str(), body)); // shorter than it said
    EXPECT_FALSE(ReadAnswerBody("lastvers:2.1;", body));
}

TEST(UpdateFile, TextureSetsKeepOrderDropRepeatsAndStayInBounds) {
    BuildTextureSets("set_uid:7;set_name:Paper;set_uid:3;set_name:Rust and Grime;set_uid:7;set_name:Again;"
                     "set_uid:x;set_name:NoId;set_uid:9;");
    ASSERT_EQ(TextureSetCount, 3);
    EXPECT_EQ(TextureSets[0].SetId, 7u);
    EXPECT_STREQ(TextureSets[0].Name, "Paper");
    EXPECT_EQ(TextureSets[1].SetId, 3u);
    EXPECT_STREQ(TextureSets[1].Name, "Rust and Grime");
    EXPECT_EQ(TextureSets[2].SetId, 9u);
    EXPECT_STREQ(TextureSets[2].Name, "");

    const std::string longName(300, 'n');
    BuildTextureSets(("set_uid:1;set_name:" + longName).c_str()); // no ";" before the end
    ASSERT_EQ(TextureSetCount, 1);
    EXPECT_EQ(std::strlen(TextureSets[0].Name), sizeof TextureSets[0].Name - 1);

    std::string many;
    for (int i = 0; i < kMaxTextureSets + 40; ++i) many += "set_uid:" + std::to_string(i) + ";set_name:S;";
    BuildTextureSets(many.c_str());
    EXPECT_EQ(TextureSetCount, kMaxTextureSets);
    EXPECT_EQ(TextureSets[kMaxTextureSets - 1].SetId, uint32_t(kMaxTextureSets - 1));
}

TEST(UpdateFile, QueryValuesAreEncoded) {
    EXPECT_EQ(EncodeQueryValue("updateinfo"), "updateinfo");
    EXPECT_EQ(EncodeQueryValue("Win 64\tx"), "Win+64+x");
    EXPECT_EQ(EncodeQueryValue("a&b=c/~%"), "a%26b%3Dc%2F%7E%25");
    EXPECT_EQ(EncodeQueryValue("\xC3\xA9"), "%C3%A9");
}

TEST(UpdateFile, RequestBytesFollowTheAddress) {
    HttpTarget target;
    ASSERT_TRUE(SplitHttpAddress("http://example.org:8080/a/b?q=1", target));
    EXPECT_EQ(target.name, "example.org");
    EXPECT_EQ(target.port, 8080);
    EXPECT_EQ(BuildHttpRequest(target), ExpectedRequest("a/b?q=1", "example.org:8080"));

    ASSERT_TRUE(SplitHttpAddress("HTTP://example.org", target));
    EXPECT_EQ(target.port, 80);
    EXPECT_EQ(BuildHttpRequest(target), ExpectedRequest("", "example.org"));
    for (const char* port : {"http://h:0/", "http://h:x1/", "http://h:/", "http://h:70000/"}) {
        ASSERT_TRUE(SplitHttpAddress(port, target));
        EXPECT_EQ(target.port, 80) << port;
        EXPECT_EQ(target.name, "h");
    }
    for (const char* refused : {"HtTP://h/", "https://h/", "http:/h/", "ftp://h/", ""})
        EXPECT_FALSE(SplitHttpAddress(refused, target)) << refused;
    EXPECT_EQ(HttpGet("HtTP://127.0.0.1:1/"), nullptr);

    ASSERT_TRUE(SplitHttpAddress(("http://h/" + std::string(kHttpRequestSize, 'p')).c_str(), target));
    EXPECT_TRUE(BuildHttpRequest(target).empty());
}

// With no server at the endpoint (refused at once), as every test here but the last.
TEST_F(UpdateCheckTest, FailedAskKeepsTheOldContentUnderANewStamp) {
    WriteUserValue(kNewVersionValue, 1);
    RefreshUpdateInfoAt(UpdateFile(), kNow); // no file at all
    EXPECT_EQ(ReadUpdateFile(), Stamp(kNow) + "lastvers:0;");
    EXPECT_TRUE(NewVersionKnown); // learnt nothing, so the kept flag holds
    EXPECT_EQ(ReadUserValue(kNewVersionValue), 1u);

    WriteUpdateFile(Stamp(kNow - 86401) + "lastvers:2.1;set_uid:5;set_name:Wood;");
    WriteUserValue(kNewVersionValue, 0);
    RefreshUpdateInfoAt(UpdateFile(), kNow);
    EXPECT_EQ(ReadUpdateFile(), Stamp(kNow) + "lastvers:2.1;set_uid:5;set_name:Wood;");
    EXPECT_FALSE(NewVersionKnown);
    EXPECT_FLOAT_EQ(LatestVersion, 2.1f);
    ASSERT_EQ(TextureSetCount, 1);
    EXPECT_STREQ(TextureSets[0].Name, "Wood");

    WriteUpdateFile("set_uid:5;set_name:Wood;"); // neither stamp nor version
    RefreshUpdateInfoAt(UpdateFile(), kNow);
    EXPECT_EQ(ReadUpdateFile(), Stamp(kNow) + "lastvers:0;set_uid:5;set_name:Wood;");
}

TEST_F(UpdateCheckTest, FreshStampAsksNobody) {
    LoopbackServer server({{0, HttpAnswer("lastvers:9.0;")}}, false, 300);
    ASSERT_TRUE(server.Listening());
    SetUpdateEndpointOverride(server.Address("u"));
    const std::string text = Stamp(kNow - 86400) + "lastvers:2.5;set_uid:2;set_name:Cloth;";
    WriteUpdateFile(text);
    WriteUserValue(kNewVersionValue, 0);
    const auto start = std::chrono::steady_clock::now();
    RefreshUpdateInfoAt(UpdateFile(), kNow);
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    std::printf("[ timing ] refresh with a fresh stamp: %.2f ms\n", ms);
    server.Finish();
    EXPECT_FALSE(server.Connected());
    EXPECT_EQ(ReadUpdateFile(), text);
    EXPECT_TRUE(NewVersionKnown);
    EXPECT_EQ(ReadUserValue(kNewVersionValue), 1u);
    ASSERT_EQ(TextureSetCount, 1);
    EXPECT_EQ(TextureSets[0].SetId, 2u);
}
