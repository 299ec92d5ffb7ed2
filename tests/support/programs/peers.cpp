#include "tests/support/programs/peers.h"

#include <chrono>
#include <cstdlib>
#include <gio/gio.h>
#include <gtest/gtest.h>

#include "osp/base/owner.h"

namespace Osp::Testing {

using Json = nlohmann::json;

namespace {

constexpr std::chrono::seconds kStartLimit{30};

}  // namespace

Peers::Peers() : process_({"python3", KIVO_PEERS}, Process::Pipes::kInputAndOutput) {
    about_ = Json::parse(process_.ReadLine(kStartLimit).value_or(""), nullptr, false);
    if (about_.is_object()) return;
    ADD_FAILURE() << "the servers did not start";
    std::abort();  // nothing that follows makes sense
}

void Peers::Control(const Json& words) const {
    Ask("POST /", words.dump());
}

Json Peers::Received() const {
    return Json::parse(Ask("GET /received", ""));
}

std::string Peers::Content(std::size_t place) const {
    return Ask("GET /content/" + std::to_string(place), "");
}

std::string Peers::Ask(const std::string& head, const std::string& body) const {
    const Base::Owner<GSocketClient, g_object_unref> client(g_socket_client_new());
    g_socket_client_set_enable_proxy(client.get(), FALSE);
    const Base::Owner<GSocketConnection, g_object_unref> connection(g_socket_client_connect_to_host(
        client.get(), "127.0.0.1", about_["control"].get<guint16>(), nullptr, nullptr));
    if (!connection) return {};
    const std::string request =
        head + " HTTP/1.0\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    GIOStream* const stream = G_IO_STREAM(connection.get());
    g_output_stream_write_all(g_io_stream_get_output_stream(stream), request.data(), request.size(),
                              nullptr, nullptr, nullptr);
    std::string answer;
    char block[4096];
    for (gssize count; (count = g_input_stream_read(g_io_stream_get_input_stream(stream), block,
                                                    sizeof block, nullptr, nullptr)) > 0;) {
        answer.append(block, static_cast<std::size_t>(count));
    }
    const std::size_t gap = answer.find("\r\n\r\n");
    return gap == std::string::npos ? "" : answer.substr(gap + 4);
}

}  // namespace Osp::Testing
