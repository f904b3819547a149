#pragma once
#include "StandIns.h"
#include "TemporaryFolder.h"
#include "UserDefaults.h"
#include <gtest/gtest.h>
#include <memory>

namespace quillane {

struct MacDefaults {
    static std::unique_ptr<Defaults> make(const TemporaryFolder& folder) {
        StandIns::forgetDefaults();
        return std::make_unique<UserDefaults>(folder.at("lock"));
    }
};

using DefaultsKinds = testing::Types<MacDefaults>;

} // namespace quillane
