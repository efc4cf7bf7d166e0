#ifndef KTL_KTL_H
#define KTL_KTL_H

// Everything a host needs, in one include.
#include <matrix/matrix.h>
#include <util/util.h>

#include <ktl/alist.h>
#include <ktl/appEnv.h>
#include <ktl/applicationSettings.h>
#include <ktl/atom.h>
#include <ktl/baseConfigVariable.h>
#include <ktl/cmdLine.h>
#include <ktl/configVariable.h>
#include <ktl/envInit.h>
#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <ktl/envList.h>
#include <ktl/envNamedList.h>
#include <ktl/envObject.h>
#include <ktl/envObjectSync.h>
#include <ktl/envValue.h>
#include <ktl/envXmlReader.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/eval.h>
#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <ktl/fedReader1516.h>
#include <ktl/float.h>
#include <ktl/fomSorter.h>
#include <ktl/integer.h>
#include <ktl/io.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/ktlFedReader.h>
#include <ktl/lenv.h>
#include <ktl/list.h>
#include <ktl/locative.h>
#include <ktl/lstream.h>
#include <ktl/lstring.h>
#include <ktl/math.h>
#include <ktl/memory.h>
#include <ktl/nativeValue.h>
#include <ktl/null.h>
#include <ktl/read.h>
#include <ktl/register.h>
#include <ktl/subrs.h>
#include <ktl/variableGroup.h>
#include <ktl/xmlFedReader.h>

#endif
