// The entry of the application library.
#include <memory>

#include <osp/app/application.h>
#include <osp/base/collection/array_list.h>
#include <osp/base/string.h>

#include "app/kivo_camera.h"

extern "C" __attribute__((visibility("default"))) int OspMain(int argc, char** argv) {
    using Osp::Base::Collection::ArrayList;
    const auto arguments = std::make_unique<ArrayList>();
    if (Osp::Failed(arguments->Construct(10))) return 0;
    for (int i = 0; i < argc; ++i) (void)arguments->Add(new Osp::Base::String(argv[i]));
    const result r =
        Osp::App::Application::Execute(Kivo::KIVOCamera::CreateInstance, arguments.get());
    arguments->RemoveAll(true);
    // The platform's exit status has 16 bits.
    return static_cast<int>(static_cast<unsigned>(r) & 0xFFFFU);
}
