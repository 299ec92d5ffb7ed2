// What is sent is exactly what the application has asked for: everything that libcurl would add by
// itself is taken away. An entry of its list that ends with a colon takes a field away; one with a
// semicolon is a field without a value.
//
// - A connection serves one request. One that is used again may have been closed by the server
//   meanwhile, and a body that has been handed on cannot be sent a second time.
// - A server may answer before it has read the body, and close. libcurl then fails to send, but the
//   answer is there: that counts (IsAnswered).
// - Idle is a connection on which the other side confirms nothing and sends nothing. What libcurl
//   counts as sent may lie in the kernel for minutes while a slow line works through it.
// - Callbacks of libcurl's must not throw.
#include "backends/http/curl_transfer.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace Osp::Http {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr std::size_t kLargestHeader = 64 * 1024;
constexpr long kUploadBuffer = 16 * 1024;  // the least that libcurl takes
constexpr int kLooksPerLimit = 10;
constexpr const char* kOwnFields[] = {"Accept:", "Expect:", "User-Agent:"};
constexpr const char* kContentType = "Content-Type";

microseconds Now() {
    return microseconds(g_get_monotonic_time());
}

std::string EntryOf(const std::string& name, const std::string& value) {
    const bool isBlank = value.find_first_not_of(' ') == std::string::npos;
    std::string entry(name);
    return isBlank ? entry.append(";") : entry.append(": ").append(value);
}

result ResultOf(CURLcode code) {
    switch (code) {
        case CURLE_OK:
            return result::kSuccess;
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_CONNECT:
            return result::kNotConnected;
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CACERT_BADFILE:
            return result::kUntrusted;
        case CURLE_OPERATION_TIMEDOUT:
            return result::kTimedOut;
        case CURLE_OUT_OF_MEMORY:
            return result::kOutOfMemory;
        case CURLE_UNSUPPORTED_PROTOCOL:
        case CURLE_WEIRD_SERVER_REPLY:
            return result::kInvalidFormat;
        default:
            return result::kIo;
    }
}

}  // namespace

CurlCookies::CurlCookies() : share_(curl_share_init()) {
    if (!share_) throw std::bad_alloc();
    curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
}

CurlTransfer::CurlTransfer(const TransferSettings& settings, CurlReactor& reactor,
                           const Net::OutgoingRequest& request, Net::TransferClient& client)
    : reactor_(reactor),
      client_(client),
      idleLimit_(settings.idleLimit),
      easy_(curl_easy_init()),
      changedAt_(Now()) {
    if (!easy_) throw std::bad_alloc();
    SetServer(request);
    SetHeader(request);
    if (request.isPost) SetBody(request.bodySize.value_or(0));
    SetTrust(settings);
    curl_easy_setopt(easy_.get(), CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(settings.connectLimit.count()));
    if (!reactor_.Add(easy_.get(), *this)) throw std::bad_alloc();
    const auto lookMs = std::chrono::duration_cast<milliseconds>(idleLimit_).count();
    look_ = g_timeout_add(static_cast<guint>(lookMs / kLooksPerLimit + 1), OnLook, this);
}

CurlTransfer::~CurlTransfer() {
    if (look_ != 0) g_source_remove(look_);
    reactor_.Remove(easy_.get());
}

void CurlTransfer::SetServer(const Net::OutgoingRequest& request) {
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_URL, request.uri.c_str());
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(easy, CURLOPT_PROXY, "");  // nor the environment's
    curl_easy_setopt(easy, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(easy, CURLOPT_FORBID_REUSE, 1L);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // Cancelling does not wait for the thread that asks for an address.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    if (request.cookies != nullptr) {
        auto& cookies = static_cast<CurlCookies&>(*request.cookies);
        curl_easy_setopt(easy, CURLOPT_SHARE, cookies.Get());
        curl_easy_setopt(easy, CURLOPT_COOKIEFILE, "");
    }
    // What is sent to this machine because of its name must not go where somebody says it is.
    if (!Net::IsLocalhost(request.server.host)) return;
    const std::string port = std::to_string(request.server.port);
    Append(addresses_, ("localhost:" + port + ":127.0.0.1,[::1]").c_str());
    curl_easy_setopt(easy, CURLOPT_RESOLVE, addresses_.get());
}

void CurlTransfer::SetHeader(const Net::OutgoingRequest& request) {
    for (const char* field : kOwnFields) Append(fields_, field);
    const bool hasType = std::ranges::any_of(request.fields, [](const auto& field) {
        return g_ascii_strcasecmp(field.first.c_str(), kContentType) == 0;
    });
    if (!hasType) Append(fields_, (std::string(kContentType) + ":").c_str());
    for (const auto& [name, value] : request.fields) {
        Append(fields_, EntryOf(name, value).c_str());
    }
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, fields_.get());
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, OnHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, OnBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
}

void CurlTransfer::SetBody(std::uint64_t size) {
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<curl_off_t>::max());
    bodyLeft_ = size;
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_POST, 1L);
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(std::min(size, kMost)));
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, OnBodyWanted);
    curl_easy_setopt(easy, CURLOPT_READDATA, this);
    curl_easy_setopt(easy, CURLOPT_UPLOAD_BUFFERSIZE, kUploadBuffer);
}

void CurlTransfer::SetTrust(const TransferSettings& settings) {
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    if (settings.authorities.empty()) return;
    const std::string& text = settings.authorities;
    curl_blob blob{const_cast<char*>(text.data()), text.size(), CURL_BLOB_NOCOPY};
    curl_easy_setopt(easy, CURLOPT_CAINFO_BLOB, &blob);
}

void CurlTransfer::ResumeBody() {
    if (isEnded_ || !isPaused_) return;
    isPaused_ = false;
    curl_easy_pause(easy_.get(), CURLPAUSE_CONT);
}

std::size_t CurlTransfer::OnBodyWanted(char* out, std::size_t size, std::size_t count,
                                       void* transfer) try {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    if (self.bodyLeft_ == 0) return 0;
    const std::size_t taken =
        self.client_.TakeBody({reinterpret_cast<Base::byte*>(out), size * count});
    self.bodyLeft_ -= taken;
    self.isPaused_ = taken == 0;
    return self.isPaused_ ? CURL_READFUNC_PAUSE : taken;
} catch (const std::bad_alloc&) {
    static_cast<CurlTransfer*>(transfer)->failure_ = result::kOutOfMemory;
    return CURL_READFUNC_ABORT;
}

// Also what comes before the answer proper, again and again perhaps, and behind its body.
std::size_t CurlTransfer::OnHeader(char* line, std::size_t size, std::size_t count,
                                   void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    const std::size_t bytes = size * count;
    self.headerSize_ += bytes;
    if (self.headerSize_ > kLargestHeader) {
        self.failure_ = result::kOutOfRange;
        return CURL_WRITEFUNC_ERROR;
    }
    constexpr int kFirstFinalStatus = 200;
    const bool isEmpty = line[0] == '\r' || line[0] == '\n';
    if (isEmpty && self.Status() >= kFirstFinalStatus) self.isHeaderComplete_ = true;
    return bytes;
}

std::size_t CurlTransfer::OnBody(char* part, std::size_t size, std::size_t count, void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    const std::size_t bytes = size * count;
    result r = result::kOutOfMemory;
    try {
        r = self.client_.AddToAnswer({reinterpret_cast<const Base::byte*>(part), bytes});
    } catch (const std::bad_alloc&) {
    }
    self.answerSize_ += bytes;
    if (Succeeded(r)) return bytes;
    self.failure_ = r;
    return CURL_WRITEFUNC_ERROR;
}

gboolean CurlTransfer::OnLook(gpointer transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    const std::uint64_t bytes = self.reactor_.BytesMoved(self.easy_.get());
    if (bytes != self.bytesSeen_) {
        self.bytesSeen_ = bytes;
        self.changedAt_ = Now();
    }
    if (Now() - self.changedAt_ < self.idleLimit_) return G_SOURCE_CONTINUE;
    self.look_ = 0;
    self.End(self.IsAnswered(false) ? result::kSuccess : result::kTimedOut);
    return G_SOURCE_REMOVE;
}

void CurlTransfer::OnDone(CURLcode code) {
    // To libcurl a header that breaks off is one that ends.
    const bool isWhole = code == CURLE_OK && isHeaderComplete_;
    const bool isThere = isWhole || (!failure_ && IsAnswered(code == CURLE_SEND_ERROR));
    const result why = code == CURLE_OK ? result::kIo : ResultOf(code);
    End(isThere ? result::kSuccess : failure_.value_or(why));
}

// An answer that does not say how long it is ends with the connection. If that broke while the body
// was being sent, a refusal counts as it stands.
bool CurlTransfer::IsAnswered(bool wasSending) const {
    constexpr int kFirstRefusal = 300;
    if (!isHeaderComplete_) return false;
    curl_off_t length = -1;
    curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    if (length >= 0) return answerSize_ == static_cast<std::uint64_t>(length);
    return wasSending && Status() >= kFirstRefusal;
}

int CurlTransfer::Status() const {
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

void CurlTransfer::End(result r) {
    if (isEnded_) return;
    isEnded_ = true;
    if (look_ != 0) g_source_remove(std::exchange(look_, 0));
    reactor_.Remove(easy_.get());
    client_.OnEnd(r, Status());
}

}  // namespace Osp::Http
