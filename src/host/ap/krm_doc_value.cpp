#include "host/ap/krm_doc_value.h"

#include <memory>

namespace {

std::unique_ptr<QaApDataManager<KrmDocValue>> g_docValues;
std::unique_ptr<QaApDataManager<CDocData>> g_docData;

}  // namespace

void KrmCreateDocDataManagers() {
  if (!g_docData) g_docData = std::make_unique<QaApDataManager<CDocData>>();
  if (!g_docValues) g_docValues = std::make_unique<QaApDataManager<KrmDocValue>>();
}

void KrmDestroyDocDataManagers() {
  g_docValues.reset();
  g_docData.reset();
}

QaApDataManager<KrmDocValue>* KrmDocValueManager() { return g_docValues.get(); }

QaApDataManager<CDocData>* KrmDocDataManager() { return g_docData.get(); }

KrmDocValue* KrmCurDocValue() {
  QaApDocument* doc = qaCurDoc();
  if (!g_docValues || !doc) return nullptr;
  return &g_docValues->docData(doc);
}
