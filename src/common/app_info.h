#pragma once

/** What the program calls itself. */
inline constexpr const char* gAppName = "Vesmo Editor";
inline constexpr const char* gAppVer = "Ver 3.26";
inline constexpr const char* gAppSignature = "application/x-vnd.KOREVA-VesmoEditor";
