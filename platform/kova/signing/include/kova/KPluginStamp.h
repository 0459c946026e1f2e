#pragma once

#include <kova/KApiVersion.h>

// The stamp every Kova plug-in carries: two exported data objects in the library's .data,
//   KApiVersion            16 bytes, the API version text, NUL-padded
//   NORV_PLUGIN_SIGNATURE  128 bytes, directly after it, filled in by `norv-sign`
// The host's loader reads both from the file (never by loading it) before it accepts the library.
//
// Write `KOVA_PLUGIN_STAMP();` once, at file scope, in one source file of the plug-in. Until the
// library is signed, the signature block holds KOVA_PLUGIN_UNSIGNED_WORD repeated 16 times.
//
// Both labels are defined by one assembler block in one section, so the adjacency and the symbol
// sizes and types are fixed by construction; no linker ordering is involved. The symbols are
// global with default visibility, so they are exported even under -fvisibility=hidden.

#define KOVA_API_VERSION_FIELD_SIZE 16
#define KOVA_PLUGIN_SIGNATURE_SIZE 128
#define KOVA_PLUGIN_UNSIGNED_WORD "UNSIGNED"

#define KOVA_PLUGIN_STAMP_TEXT_(x) #x
#define KOVA_PLUGIN_STAMP_TEXT(x) KOVA_PLUGIN_STAMP_TEXT_(x)
#define KOVA_PLUGIN_STAMP_FIELD_SIZE_TEXT KOVA_PLUGIN_STAMP_TEXT(KOVA_API_VERSION_FIELD_SIZE)
#define KOVA_PLUGIN_STAMP_BLOCK_SIZE_TEXT KOVA_PLUGIN_STAMP_TEXT(KOVA_PLUGIN_SIGNATURE_SIZE)

// Stamps the library with the API version of the SDK it is compiled against.
#define KOVA_PLUGIN_STAMP() KOVA_PLUGIN_STAMP_FOR_API(KOVA_API_VERSION)

// Stamps the library with the given API version text, a string literal of at most 15 plain
// characters (no quotes or backslashes). Test fixtures use it to pose as other SDK versions.
// clang-format off
#define KOVA_PLUGIN_STAMP_FOR_API(versionText)                                                     \
    static_assert(sizeof(versionText) <= KOVA_API_VERSION_FIELD_SIZE,                              \
                  "the API version text must fit its 16-byte field with its NUL");                 \
    asm(".pushsection .data\n"                                                                     \
        ".balign 16\n"                                                                             \
        ".globl KApiVersion\n"                                                                     \
        ".type KApiVersion, %object\n"                                                             \
        ".size KApiVersion, " KOVA_PLUGIN_STAMP_FIELD_SIZE_TEXT "\n"                               \
        "KApiVersion:\n"                                                                           \
        ".asciz \"" versionText "\"\n"                                                             \
        ".fill KApiVersion + " KOVA_PLUGIN_STAMP_FIELD_SIZE_TEXT " - ., 1, 0\n"                    \
        ".globl NORV_PLUGIN_SIGNATURE\n"                                                           \
        ".type NORV_PLUGIN_SIGNATURE, %object\n"                                                   \
        ".size NORV_PLUGIN_SIGNATURE, " KOVA_PLUGIN_STAMP_BLOCK_SIZE_TEXT "\n"                     \
        "NORV_PLUGIN_SIGNATURE:\n"                                                                 \
        ".rept " KOVA_PLUGIN_STAMP_BLOCK_SIZE_TEXT " / 8\n"                                        \
        ".ascii \"" KOVA_PLUGIN_UNSIGNED_WORD "\"\n"                                               \
        ".endr\n"                                                                                  \
        ".popsection\n")
// clang-format on
