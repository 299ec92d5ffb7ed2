#include "backends/web/authorities.h"

#include <gtest/gtest.h>

#include "tests/support/programs/process.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Web {
namespace {

/// An authority, ca.pem, and a.pem, which it has signed for a.example.
constexpr const char* kMakeFiles = R"sh(cd "$0" && exec 2>/dev/null &&
openssl req -x509 -newkey rsa:2048 -nodes -keyout ca.key -out ca.pem -days 2 -subj /CN=Test \
    -addext basicConstraints=critical,CA:TRUE &&
openssl req -newkey rsa:2048 -nodes -keyout a.key -out a.csr -subj /CN=a.example &&
echo subjectAltName=DNS:a.example > names &&
openssl x509 -req -in a.csr -CA ca.pem -CAkey ca.key -CAcreateserial -out a.pem -days 2 \
    -extfile names)sh";

TEST(AuthoritiesTest, VouchForTheirOwnInTheirOwnNameOnly) {
    const Osp::Testing::TemporaryFolder folder;
    ASSERT_TRUE(Osp::Testing::Process({"sh", "-c", kMakeFiles, folder.Path()}).Succeeds());
    const Base::Owner<GTlsCertificate, g_object_unref> signedOne(
        g_tls_certificate_new_from_file((folder / "a.pem").c_str(), nullptr));
    ASSERT_TRUE(signedOne);
    const Authorities authorities(folder / "ca.pem");
    EXPECT_TRUE(authorities.Vouches(signedOne.get(), "a.example"));
    EXPECT_FALSE(authorities.Vouches(signedOne.get(), "b.example"));
    EXPECT_FALSE(Authorities("").Vouches(signedOne.get(), "a.example"));
    EXPECT_FALSE(Authorities(folder / "names").Vouches(signedOne.get(), "a.example"));
}

}  // namespace
}  // namespace Osp::Web
