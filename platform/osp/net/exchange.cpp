#include "osp/net/exchange.h"

#include <algorithm>
#include <charconv>
#include <glib.h>
#include <limits>
#include <string>
#include <utility>

#include <osp/net/http/http_session.h>

#include "osp/net/network.h"
#include "osp/net/request_body.h"

namespace Osp::Net::Http {

namespace {

constexpr const char* kContentLength = "Content-Length";
constexpr std::uint64_t kChunk = 16 * 1024;
constexpr std::size_t kLargestAnswer = 8 * 1024 * 1024;

const std::string* FindField(const HttpHeader& header, const char* name) {
    const auto found = std::ranges::find_if(header.GetFields(), [&](const auto& field) {
        return g_ascii_strcasecmp(field.first.c_str(), name) == 0;
    });
    return found == header.GetFields().end() ? nullptr : &found->second;
}

// A number too large for any file is one all the same: what becomes of it is the server's to say.
std::optional<std::uint64_t> ParseLength(const std::string& digits) {
    std::uint64_t length = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, length);
    if (digits.empty() || stop != end) return std::nullopt;
    constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
    return error == std::errc::result_out_of_range ? kMost : length;
}

}  // namespace

std::optional<std::uint64_t> BodyLength(const HttpRequest& request, bool reportsReadyToWrite,
                                        std::uint64_t written) {
    const std::string* const field = FindField(request.GetHeader(), kContentLength);
    const std::optional<std::uint64_t> promised = field ? ParseLength(*field) : std::nullopt;
    if (field != nullptr ? !promised : reportsReadyToWrite) return std::nullopt;
    const std::uint64_t length = promised.value_or(written);
    const bool agree = reportsReadyToWrite ? length >= written : length == written;
    const bool mayBe = request.GetMethod() == HttpMethod::kPost || length == 0;
    return agree && mayBe ? std::optional(length) : std::nullopt;
}

void Exchange::Begin(std::uint64_t bodyLength) {
    transaction_.request_.body_->Submit(bodyLength, [this] {
        if (transfer_) transfer_->ResumeBody();
    });
    const result r = Start(bodyLength);
    if (Failed(r)) Abort(r);
}

result Exchange::Start(std::uint64_t bodyLength) {
    if (!IsPermitted(bodyLength)) return result::kPermissionDenied;
    Transport* const transport =
        Network::IsInstalled() ? Network::Current().GetTransport() : nullptr;
    if (transport == nullptr) return result::kUnsupported;
    OutgoingRequest request = Compose(bodyLength);
    request.cookies = FindCookies(*transport);
    transfer_ = transport->Start(request, *this);
    return transfer_ ? result::kSuccess : result::kOutOfMemory;
}

bool Exchange::IsPermitted(std::uint64_t bodyLength) const {
    const std::optional<Server> server = ParseServer(transaction_.request_.hostAddress_);
    return server->isSecure || bodyLength == 0 || IsLoopback(server->address.host) ||
           (Network::IsInstalled() && Network::Current().GetTrust().isPlainHttpAllowed);
}

OutgoingRequest Exchange::Compose(std::uint64_t bodyLength) const {
    const HttpRequest& request = transaction_.request_;
    OutgoingRequest out{.isPost = request.GetMethod() == HttpMethod::kPost,
                        .uri = request.GetUri(),
                        .server = ParseServer(request.hostAddress_)->address,
                        .fields = transaction_.session_.commonHeader_.GetFields(),
                        .bodySize = std::nullopt,
                        .cookies = nullptr};
    const auto& own = request.header_.GetFields();
    out.fields.insert(out.fields.end(), own.begin(), own.end());
    if (!out.isPost) return out;
    out.bodySize = bodyLength;
    if (FindField(request.header_, kContentLength) == nullptr) {
        out.fields.emplace_back(kContentLength, std::to_string(bodyLength));
    }
    return out;
}

CookieJar* Exchange::FindCookies(Transport& transport) const {
    HttpSession& session = transaction_.session_;
    if (session.cookieFlag_ != HttpCookieFlag::kEnabled) return nullptr;
    if (!session.cookies_) session.cookies_ = transport.MakeCookieJar();
    return session.cookies_.get();
}

void Exchange::Post(Report report) {
    events_.Post([this, report = std::move(report)] {
        IHttpTransactionEventListener* const listener = transaction_.listener_;
        if (listener != nullptr) report(*listener, transaction_.session_, transaction_);
    });
}

void Exchange::PostEnd(Report report) {
    events_.Post([this] { transfer_ = nullptr; });
    Post(std::move(report));
}

void Exchange::Abort(result reason) {
    PostEnd([reason](auto& listener, auto& session, auto& transaction) {
        listener.OnTransactionAborted(session, transaction, reason);
    });
}

void Exchange::PostReadyToWrite() {
    Post([&body = *transaction_.request_.body_](auto& listener, auto& session, auto& transaction) {
        body.Open();
        const auto recommended = static_cast<int>(std::min(kChunk, body.Missing()));
        listener.OnTransactionReadyToWrite(session, transaction, recommended);
    });
}

std::size_t Exchange::TakeBody(std::span<Base::byte> out) {
    RequestBody& body = *transaction_.request_.body_;
    const std::size_t size = body.Take(out);
    if (body.AskForMore()) PostReadyToWrite();
    return size;
}

result Exchange::AddToAnswer(std::span<const Base::byte> part) {
    std::vector<Base::byte>& body = transaction_.response_.body_;
    if (part.size() > kLargestAnswer - body.size()) return result::kOutOfRange;
    body.insert(body.end(), part.begin(), part.end());
    return result::kSuccess;
}

void Exchange::OnEnd(result r, int status) {
    events_.Drop();  // nothing more is to be written
    if (Failed(r)) return Abort(r);
    transaction_.response_.statusCode_ = status;
    const auto size = static_cast<int>(transaction_.response_.body_.size());
    if (size > 0) {
        Post([size](auto& listener, auto& session, auto& transaction) {
            listener.OnTransactionReadyToRead(session, transaction, size);
        });
    }
    PostEnd([](auto& listener, auto& session, auto& transaction) {
        listener.OnTransactionCompleted(session, transaction);
    });
}

}  // namespace Osp::Net::Http
