// Nothing that a document names is opened: a named pipe without a writer would block the command for ever, and a
// listening socket would notice the connection.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hostile/HostileTest.h"

namespace nbscore::test {
namespace {

/// A port of this machine that answers nothing but notices connections.
class Listener {
public:
    Listener() : descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        isListening = bind(descriptor, generic, size) == 0 && listen(descriptor, 8) == 0 &&
                      getsockname(descriptor, generic, &size) == 0;
    }
    ~Listener() { close(descriptor); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    bool IsListening() const { return isListening; }
    std::string Url() const { return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/x"; }
    bool WasCalled() const {
        pollfd call = {descriptor, POLLIN, 0};
        return poll(&call, 1, 0) > 0;
    }
    void Call() const {
        const int caller = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        close(caller);
    }

private:
    int descriptor;
    sockaddr_in address = {};
    bool isListening = false;
};

class NothingIsFetched : public HostileTest {
protected:
    NothingIsFetched() { EXPECT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0); }

    /// The model of fruits with everything that could make a reader fetch this address.
    std::string Naming(const std::string& url) const {
        std::string text =
            Replace(fruitDocument, "<PMML ", "<?xml-stylesheet type=\"text/xsl\" href=\"" + url + "\"?>\n<PMML ");
        text = Replace(text, "<PMML ",
                       "<PMML xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                       "xmlns:xi=\"http://www.w3.org/2001/XInclude\" xml:base=\"" +
                           url + "\" xsi:noNamespaceSchemaLocation=\"" + url +
                           "\" xsi:schemaLocation=\"http://www.dmg.org/PMML-4_4 " + url + "\" ");
        return Replace(text, "<Header/>", "<Header><xi:include href=\"" + url + "\" parse=\"text\"/></Header>");
    }

    Listener listener;
};

TEST_F(NothingIsFetched, TheListenerNoticesCalls) {
    ASSERT_TRUE(listener.IsListening());
    EXPECT_FALSE(listener.WasCalled());
    listener.Call();
    EXPECT_TRUE(listener.WasCalled());
}

TEST_F(NothingIsFetched, WhateverTheDocumentNames) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    const std::string pipe = (folder / "pipe").string();
    for (const std::string& url : {listener.Url(), "file://" + pipe, pipe, std::string("pipe")}) {
        folder.Write("model.pmml", Naming(url));
        for (const std::vector<std::string>& reading : {std::vector<std::string>{"score", "model.pmml", "cases.csv"},
                                                        {"score", "--adapt", "model.pmml", "cases.csv"}}) {
            const CommandResult result = RunLimited(reading);
            EXPECT_EQ(result.exitStatus, 0) << url << '\n' << result.err;
            EXPECT_EQ(result.out, expected) << url;
        }
        EXPECT_EQ(RunLimited({"check", "model.pmml"}).exitStatus, 0) << url;
        EXPECT_FALSE(listener.WasCalled()) << url;
    }
}

TEST_F(NothingIsFetched, ForADocumentType) {
    const std::string pipe = (folder / "pipe").string();
    for (const std::string& url : {listener.Url(), "file://" + pipe, pipe, std::string("pipe")}) {
        for (const std::string& type :
             {"SYSTEM \"" + url + "\"", "PUBLIC \"p\" \"" + url + "\"", "[<!ENTITY % e SYSTEM \"" + url + "\"> %e;]",
              "[<!ENTITY e SYSTEM \"" + url + "\">]"}) {
            folder.Write("model.pmml", Replace(fruitDocument, "<PMML ", "<!DOCTYPE PMML " + type + ">\n<PMML "));
            ExpectRefused(RunLimited({"score", "model.pmml", "cases.csv"}),
                          "2:1: error 3: A document type declaration is not accepted.");
        }
    }
    EXPECT_FALSE(listener.WasCalled());
}

}  // namespace
}  // namespace nbscore::test
