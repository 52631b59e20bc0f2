#pragma once
#define MAC_AVAILABLE_macos(version) macos, introduced = version
#define API_AVAILABLE(platform) __attribute__((availability(MAC_AVAILABLE_##platform)))
