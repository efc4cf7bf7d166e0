#include <ktl/locative.h>

// Locatives are made by DtcPtrToNode and compared by DtcEqualSign; nothing else acts on them.
