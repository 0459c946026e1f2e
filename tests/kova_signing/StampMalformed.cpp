// A hand-made stamp that breaks one rule: the signature block is MALFORMED_GAP bytes away from the
// version field and MALFORMED_SIGNATURE_SIZE bytes long (0: no signature symbol at all).

#define MALFORMED_TEXT_(x) #x
#define MALFORMED_TEXT(x) MALFORMED_TEXT_(x)
#define GAP_TEXT MALFORMED_TEXT(MALFORMED_GAP)
#define SIZE_TEXT MALFORMED_TEXT(MALFORMED_SIGNATURE_SIZE)

asm(".pushsection .data\n"
    ".globl KApiVersion\n"
    ".type KApiVersion, %object\n"
    ".size KApiVersion, 16\n"
    "KApiVersion:\n"
    ".asciz \"20250000\"\n"
    ".fill 7, 1, 0\n"
    ".fill " GAP_TEXT ", 1, 0\n"
    ".if " SIZE_TEXT "\n"
    ".globl NORV_PLUGIN_SIGNATURE\n"
    ".type NORV_PLUGIN_SIGNATURE, %object\n"
    ".size NORV_PLUGIN_SIGNATURE, " SIZE_TEXT "\n"
    "NORV_PLUGIN_SIGNATURE:\n"
    ".fill " SIZE_TEXT ", 1, 0\n"
    ".endif\n"
    ".popsection\n");
