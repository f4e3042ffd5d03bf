#include "com/LogMonitor.h"

#include "support/basLogging.h"

namespace bxvbwiz {

ComPtr<IDispatch> MakeLogMonitor(Session& session) {
  ComPtr<IDispatch> monitor;
  CLSID id;
  if (!session.log.Enabled() || FAILED(CLSIDFromProgID(L"LogMon.CMonitor", &id))) return monitor;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                              monitor.ReceiveVoid()))) {
    return {};
  }
  return monitor;
}

}  // namespace bxvbwiz
