#pragma once

#include "com/ComPtr.h"

namespace bxvbwiz {

class Session;

// An object of the optional class "LogMon.CMonitor". Nothing calls it; it is kept while the server
// lives. Null while logging is off, and when the class is not there or cannot be made.
ComPtr<IDispatch> MakeLogMonitor(Session& session);

}  // namespace bxvbwiz
