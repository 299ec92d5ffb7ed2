// A photograph on its way. The head of the body is written before the call is submitted; then the
// call says when there is room for more, which is read from the file, and at its end for the
// closing boundary. The file is open all the time, so that it is sent even when it is deleted
// meanwhile.
#include <string>

#include "app/model/request_ids.h"
#include "share/signing/oauth.h"
#include "share/sns_share_form.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

namespace {

constexpr const char* kBoundary = "---------------------------7da338270ba0";
constexpr const char* kTwitpicKey = "4f2a9c81e6b7d035a1c8e94f7b2d6031";

String DecimalOf(unsigned long value) {
    return String(std::string_view(std::to_string(value)));
}

}  // namespace

bool SnsShareForm::IsUploading() const {
    return currentRequest_ == kRequestTwitterShare || currentRequest_ == kRequestFacebookShare;
}

// The hashtag goes to the message itself and not to a copy, deliberately: who shares twice without
// a new message has it twice.
void SnsShareForm::UploadToTwitpic() {
    if (Osp::Failed(BeginUpload(kTwitpicApi, "/1/uploadAndPost.xml"))) return EndCall();
    shareMessage_.Append(" #KIVO");
    const Field fields[] = {{"key", kTwitpicKey},
                            {"consumer_token", kConsumerKey},
                            {"consumer_secret", kConsumerSecret},
                            {"oauth_token", twitterToken_},
                            {"oauth_secret", twitterSecret_},
                            {"message", shareMessage_}};
    if (Osp::Failed(SubmitUpload(fields, "media"))) EndCall();
}

// The "@" deliberately names no file.
void SnsShareForm::UploadToFacebook() {
    if (Osp::Failed(BeginUpload(kFacebookGraph, "/me/photos"))) return EndCall();
    const Field fields[] = {
        {"access_token", facebookToken_}, {"source", "@"}, {"message", shareMessage_}};
    if (Osp::Failed(SubmitUpload(fields, "fileName"))) EndCall();
}

result SnsShareForm::BeginUpload(const Service& service, const char* path) {
    result r = OpenPost(service, path);
    if (Osp::Failed(r)) return r;
    transaction_->EnableReadyToWrite();
    photo_ = std::make_unique<Osp::Io::File>();
    r = photo_->Construct(photoPath_, "r");
    if (Osp::Failed(r)) return r;
    body_ = std::make_unique<MultipartForm>();
    r = body_->Construct(kBoundary);
    if (Osp::Failed(r)) return r;
    return transaction_->GetRequest().GetHeader().AddField("Content-Type", body_->GetContentType());
}

result SnsShareForm::SubmitUpload(std::span<const Field> fields, const char* fileField) {
    result r = result::kSuccess;
    for (const Field& field : fields) {
        if (Osp::Succeeded(r)) r = body_->AddFormData(field.name, field.value);
    }
    if (Osp::Succeeded(r)) r = body_->SetFile(fileField, "application/octet-stream", photoPath_);
    if (Osp::Failed(r)) return r;
    auto& request = transaction_->GetRequest();
    r = request.GetHeader().AddField("Content-Length", DecimalOf(body_->GetSize()));
    const std::unique_ptr<ByteBuffer> head(body_->GetFormsN());
    if (!head) return result::kOutOfMemory;
    if (Osp::Succeeded(r)) r = request.WriteBody(*head);
    head->Clear();  // of the tokens in it
    return Osp::Failed(r) ? r : transaction_->Submit();
}

// A photograph that cannot be read any more, or is not as long as it was, cannot be sent: that ends
// as if the connection had broken.
void SnsShareForm::OnTransactionReadyToWrite(HttpSession&, HttpTransaction& transaction,
                                             int recommendedBytes) {
    if (!IsUploading()) return;
    if (Osp::Succeeded(WriteMore(transaction, recommendedBytes))) return;
    EndCall();
    TellMainForm(kRequestShareCancelled);
}

result SnsShareForm::WriteMore(HttpTransaction& transaction, int recommendedBytes) {
    if (!photo_) return result::kInvalidState;
    ByteBuffer part;
    result r = part.Construct(recommendedBytes);
    if (Osp::Failed(r)) return r;
    r = photo_->Read(part);
    if (r == result::kEndOfFile) {
        photo_.reset();  // nothing is asked for after the boundary, unless the file has shrunk
        const std::unique_ptr<ByteBuffer> last(body_->GetLastBoundaryN());
        return last ? transaction.GetRequest().WriteBody(*last) : result::kOutOfMemory;
    }
    if (Osp::Failed(r)) return r;
    part.Flip();
    return transaction.GetRequest().WriteBody(part);
}

}  // namespace Kivo
