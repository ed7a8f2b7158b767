#ifndef QCOMM_CREATEBUILTDIRECTORY_H
#define QCOMM_CREATEBUILTDIRECTORY_H

#include "commtypes.h"

namespace Comm {

// createDeepDirectory for the path builders, which return their path
// whatever happens: the first failure for a directory is logged as a
// warning naming it and the reason. Internal to the helper layer.
bool _createBuiltDirectory(const WideString& path);

} // namespace Comm

#endif // QCOMM_CREATEBUILTDIRECTORY_H
