// The update check's tests: a one-connection HTTP server on 127.0.0.1 (never another
// address) that plays a scripted answer and keeps the request it got, and a fixture that
// gives each test its own update file and user store.
#pragma once

#include "common/TempPaths.h"
#include "online/UpdateCheck.h"
#include "online/UpdateEndpoint.h"
#include "platform/Sockets.h"
#include "platform/UserStore.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

struct AnswerPart {
    int pauseMs = 0;
    std::string bytes;
};

class LoopbackServer {
public:
    // `answer` is sent in parts after their pauses, then the connection closes. With
    // `silent` nothing is sent and the server waits for the client to give up.
    explicit LoopbackServer(std::vector<AnswerPart> answer, bool silent = false, int acceptMs = 10000)
        : answer_(std::move(answer)), silent_(silent) {
        started_ = StartSockets();
        listener_ = ListenLoopback(port_);
        if (listener_ != kNoSocket) thread_ = std::thread([this, acceptMs] { Serve(acceptMs); });
    }
    ~LoopbackServer() {
        Finish();
        CloseSocket(listener_);
        if (started_) StopSockets();
    }
    bool Listening() const { return listener_ != kNoSocket; }
    std::string Address(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + "/" + path;
    }
    uint16_t Port() const { return port_; }
    // Waits for the exchange to end; then the request and the connection can be read.
    void Finish() {
        if (thread_.joinable()) thread_.join();
    }
    const std::string& Request() const { return request_; }
    bool Connected() const { return connected_; }

private:
    void Serve(int acceptMs) {
        const SocketHandle s = AcceptConnection(listener_, acceptMs);
        if (s == kNoSocket) return;
        connected_ = true;
        SetReceiveTimeout(s, 3000);
        char buffer[512];
        while (request_.find("\r\n\r\n") == std::string::npos && request_.size() < 8192) {
            const int got = ReceiveSome(s, buffer, sizeof buffer);
            if (got <= 0) break;
            request_.append(buffer, size_t(got));
        }
        for (const AnswerPart& part : silent_ ? std::vector<AnswerPart>() : answer_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(part.pauseMs));
            size_t sent = 0;
            while (sent < part.bytes.size()) {
                const int n =
                    SendOnce(s, part.bytes.data() + sent, int(std::min<size_t>(part.bytes.size() - sent, 65536)));
                if (n <= 0) break;
                sent += size_t(n);
            }
            if (sent < part.bytes.size()) break; // the client has gone
        }
        // A silent server holds the line until the client gives up.
        for (int i = 0; silent_ && i < 4 && ReceiveSome(s, buffer, sizeof buffer) != 0; ++i) {}
        CloseSocket(s);
    }

    std::vector<AnswerPart> answer_;
    bool silent_;
    bool started_ = false;
    SocketHandle listener_ = kNoSocket;
    uint16_t port_ = 0;
    std::thread thread_;
    std::string request_;
    bool connected_ = false;
};

// An answer as a server writes it, with its length.
inline std::string HttpAnswer(const std::string& body, const char* status = "200 OK") {
    return std::string("HTTP/1.1 ") + status +
           "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + body;
}

// What the client must send for `path` to a server at `hostPort`.
inline std::string ExpectedRequest(const std::string& path, const std::string& hostPort) {
    return "GET /" + path + " HTTP/1.1\r\nHost: " + hostPort +
           "\r\nUser-agent: Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1; SV1)\r\nAccept: */*\r\n\r\n";
}

class UpdateCheckTest : public testing::Test {
protected:
    void SetUp() override {
        folder_ = ProcessTempDir() / testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::create_directories(folder_);
#ifndef _WIN32
        // The user value goes to a store of this test's own.
        setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
#endif
        // Nothing reaches past this machine unless a test names its server.
        SetUpdateEndpointOverride("http://127.0.0.1:1/");
    }
    void TearDown() override {
        SetUpdateEndpointOverride("");
        // Windows keeps the value in the registry that later dialogs of the run read.
        WriteUserValue(kNewVersionValue, 0);
    }

    std::string UpdateFile() const { return (folder_ / "Updatings.db").string(); }
    void WriteUpdateFile(const std::string& text) const { std::ofstream(UpdateFile(), std::ios::binary) << text; }
    std::string ReadUpdateFile() const {
        std::ifstream in(UpdateFile(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    std::filesystem::path folder_;
};
