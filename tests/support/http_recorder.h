// Keeps what a transaction reports.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <osp/net/http/http_session.h>
#include <osp/net/http/i_http_transaction_event_listener.h>

#include "osp/base/values/buffer_copy.h"

namespace Osp::Testing {

inline std::unique_ptr<Base::ByteBuffer> BufferOf(std::string_view text) {
    return Base::CopyToBuffer({reinterpret_cast<const Base::byte*>(text.data()), text.size()});
}

class HttpRecorder : public Net::Http::IHttpTransactionEventListener {
  public:
    using Session = Net::Http::HttpSession;
    using Transaction = Net::Http::HttpTransaction;

    std::vector<std::string> calls;  // "write", "read", "completed" or "aborted", in their order
    int recommended = 0;             // by the last "write"
    int status = 0;
    std::string body;
    result reason = result::kSuccess;
    /// Called last by each report, with its name.
    std::function<void(const std::string&, Session&, Transaction&)> then;

    bool HasEnded() const {
        return !calls.empty() && (calls.back() == "completed" || calls.back() == "aborted");
    }

    void OnTransactionReadyToRead(Session& session, Transaction& transaction, int bytes) override {
        const std::unique_ptr<Base::ByteBuffer> read(transaction.GetResponse().ReadBodyN());
        body.assign(read->Remaining().begin(), read->Remaining().end());
        if (bytes != read->GetRemaining()) body = "not as long as it was said to be";
        Note("read", session, transaction);
    }
    void OnTransactionReadyToWrite(Session& session, Transaction& transaction, int bytes) override {
        recommended = bytes;
        Note("write", session, transaction);
    }
    void OnTransactionCompleted(Session& session, Transaction& transaction) override {
        status = transaction.GetResponse().GetStatusCode();
        Note("completed", session, transaction);
    }
    void OnTransactionAborted(Session& session, Transaction& transaction, result why) override {
        reason = why;
        Note("aborted", session, transaction);
    }

  private:
    void Note(const char* name, Session& session, Transaction& transaction) {
        calls.emplace_back(name);
        if (then) then(name, session, transaction);
    }
};

}  // namespace Osp::Testing
