#ifndef TESTS_SUPPORT_LANGUAGE_H
#define TESTS_SUPPORT_LANGUAGE_H

#include <initializer_list>
#include <string>

#include <ktl/ktl.h>

namespace ktltest {

// A root frame holding the language's constants (nil, t, eof, *unbound*) and every primitive
// of the evaluator, lists, predicates, arithmetic, strings and output: nothing that touches
// files, the environment or processes.
KORRti::DtlObjPtr makeLanguageFrame();

// Ends a root frame whatever else still holds it, as an embedding host does: cycles through the
// root (closures made in calls and kept in the root, frames bound in their parent) go with it.
// Any other handle on the root dangles afterwards.
void destroyLanguageFrame(KORRti::DtlObjPtr& frame);

// A list of the given objects, in order.
KORRti::DtlObjPtr list(std::initializer_list<KORRti::DtlObjPtr> items);

// Reads every form of text and evaluates it in frame; answers the last value (nil for none).
KORRti::DtlObjPtr evalText(std::string const& text, KORRti::DtlObjPtr const& frame);

// The text DtcObjFprint writes for x.
std::string printed(KORRti::DtlObjPtr const& x);

}  // namespace ktltest

#endif
