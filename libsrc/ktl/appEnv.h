#ifndef KTL_APPENV_H
#define KTL_APPENV_H

namespace KORRti {

// Process set-up for hosts: initialises libxml2's parser. Nothing in the library calls it.
void initAppEnv();

}  // namespace KORRti

#endif
