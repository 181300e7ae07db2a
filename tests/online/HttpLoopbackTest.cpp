// The client against a server of the test's own on 127.0.0.1: good, slow, cut, hostile,
// huge and silent answers, and no server at all. The server checks the request's bytes.
#include "online/OnlineFixture.h"

#include "online/HttpGet.h"
#include "online/TextureSets.h"
#include "online/UpdateCheck.h"
#include "online/UpdateState.h"
#include "platform/UserStore.h"

#include <cstring>

namespace {

constexpr int64_t kNow = 1764000000;
constexpr const char* kPath = "qzt/updateinfo.php";
constexpr const char* kQuery = "qzt/updateinfo.php?request=updateinfo&os=Win";

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

std::string HostPort(const LoopbackServer& server) { return "127.0.0.1:" + std::to_string(server.Port()); }

const std::string kThreeSets = "lastvers:2.1;set_uid:11;set_name:Paper;set_uid:12;set_name:Rust;"
                               "set_uid:11;set_name:Paper again;set_uid:13;set_name:Concrete;";

} // namespace

TEST_F(UpdateCheckTest, GoodAnswersAreStoredAndRead) {
    for (const bool newer : {true, false}) {
        const std::string body = newer ? kThreeSets : "lastvers:2.0;";
        LoopbackServer server({{0, HttpAnswer(body)}});
        ASSERT_TRUE(server.Listening());
        SetUpdateEndpointOverride(server.Address(kPath));
        WriteUserValue(kNewVersionValue, newer ? 0 : 1);
        RefreshUpdateInfoAt(UpdateFile(), kNow);
        server.Finish();
        EXPECT_EQ(server.Request(), ExpectedRequest(kQuery, HostPort(server)));
        EXPECT_EQ(ReadUpdateFile(), "datestr:" + std::to_string(kNow) + ";" + body);
        EXPECT_EQ(NewVersionKnown, newer);
        EXPECT_EQ(ReadUserValue(kNewVersionValue), newer ? 1u : 0u);
        EXPECT_EQ(TextureSetCount, newer ? 3 : 0);
    }
    EXPECT_STREQ(TextureSets[0].Name, "Paper");
    EXPECT_STREQ(TextureSets[1].Name, "Rust");
    EXPECT_EQ(TextureSets[2].SetId, 13u);
}

TEST_F(UpdateCheckTest, BadAnswersCountAsNone) {
    const std::string old = "datestr:1;lastvers:2.5;set_uid:4;set_name:Old;";
    const std::string cut = HttpAnswer(kThreeSets);
    static const char kGarbage[] = "HTTP/1.1 200 OK\r\n\r\nlast\0vers:9;\0\xff\x01lastvers:9;";
    const std::string garbage(kGarbage, sizeof kGarbage - 1);
    for (const std::string& answer : {cut.substr(0, cut.size() - 20), garbage, HttpAnswer(kThreeSets, "500 Oops")}) {
        LoopbackServer server({{0, answer}});
        SetUpdateEndpointOverride(server.Address(kPath));
        WriteUpdateFile(old);
        WriteUserValue(kNewVersionValue, 1);
        RefreshUpdateInfoAt(UpdateFile(), kNow);
        server.Finish();
        EXPECT_TRUE(server.Connected());
        EXPECT_EQ(ReadUpdateFile(), "datestr:" + std::to_string(kNow) + ";lastvers:2.5;set_uid:4;set_name:Old;");
        EXPECT_TRUE(NewVersionKnown);
        ASSERT_EQ(TextureSetCount, 1);
        EXPECT_STREQ(TextureSets[0].Name, "Old");
    }
}

TEST(HttpLoopback, SlowAndHugeAnswersAreReadToTheirLimits) {
    // Pauses under the time-out lose nothing; one over it is one failure of three.
    const std::string slow = HttpAnswer("lastvers:3.0;");
    LoopbackServer server(
        {{0, slow.substr(0, 10)}, {900, slow.substr(10, 10)}, {900, slow.substr(20, 10)}, {1200, slow.substr(30)}});
    auto answer = HttpGet(server.Address("slow").c_str());
    server.Finish();
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(std::string(answer.get()), slow);
    EXPECT_EQ(server.Request(), ExpectedRequest("slow", HostPort(server)));

    // 3 MiB without a zero: the buffer fills, keeps its zero, and the rest is left.
    LoopbackServer huge({{0, "HTTP/1.1 200 OK\r\n\r\n" + std::string(3 << 20, 'x')}});
    answer = HttpGet(huge.Address("").c_str());
    huge.Finish();
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(std::strlen(answer.get()), kHttpAnswerSize - 1);
    EXPECT_EQ(huge.Request(), ExpectedRequest("", HostPort(huge)));
}

TEST(HttpLoopback, SilenceAndNoServerGiveNull) {
    LoopbackServer silent({}, true);
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(HttpGet(silent.Address("quiet").c_str()), nullptr);
    std::printf("[ timing ] silent server: %.0f ms\n", MillisecondsSince(start));
    silent.Finish();
    EXPECT_TRUE(silent.Connected());

    // A port just given up by a listener has nobody behind it.
    uint16_t port = 0;
    ASSERT_TRUE(StartSockets());
    CloseSocket(ListenLoopback(port));
    StopSockets();
    ASSERT_NE(port, 0);
    start = std::chrono::steady_clock::now();
    EXPECT_EQ(HttpGet(("http://127.0.0.1:" + std::to_string(port) + "/").c_str()), nullptr);
    std::printf("[ timing ] refused connection: %.2f ms\n", MillisecondsSince(start));

    // For the log: a 4 KiB answer from a server that closes after it.
    std::string body = kThreeSets;
    body.resize(4096 - HttpAnswer(std::string(4096, ' ')).size() + 4096, '.');
    const std::string fourKiB = HttpAnswer(body);
    LoopbackServer quick({{0, fourKiB}});
    start = std::chrono::steady_clock::now();
    auto answer = HttpGet(quick.Address("").c_str());
    std::printf("[ timing ] %zu byte answer: %.2f ms\n", fourKiB.size(), MillisecondsSince(start));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(std::string(answer.get()), fourKiB);
}
