// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What is produced. The numeric values are compared and passed around as numbers.
enum PCW_CONFIGTYPE {
    PCW_CONFIG_PACKAGE = 0, ///< a customized installer package (.pkg)
    PCW_CONFIG_PROFILE = 1  ///< a configuration profile (.mobileconfig)
};

/// Which product is configured.
enum PCW_APPTYPE { PCW_APP_EDITOR = 0, PCW_APP_READER = 1 };
