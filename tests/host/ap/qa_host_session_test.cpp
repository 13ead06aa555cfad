#include "host/ap/qa_host_session.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_text_measure.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"

namespace {

const std::wstring kText = L"工序 M12x1.5";

double estimate() { return qadbEstimateTextWidth(kText, 3.5, 0.8); }

TEST(QaHostSession, MeasuresWithTheFontsWhileItRunsAndTheEstimateAfter) {
  QaEdScriptedIO io;
  {
    QaHostSession session(io);
    EXPECT_EQ(qadbTextWidth(kText, QaDbObjectId(), 3.5, 0.8), qagiTextWidth(kText, QaDbObjectId(), 3.5, 0.8));
    EXPECT_NE(qadbTextWidth(kText, QaDbObjectId(), 3.5, 0.8), estimate());
    {
      QaDbEstimatedTextWidth wanted;  // a test that wants the estimate says so
      EXPECT_EQ(qadbTextWidth(kText, QaDbObjectId(), 3.5, 0.8), estimate());
    }
    EXPECT_EQ(qadbTextWidth(kText, QaDbObjectId(), 3.5, 0.8), qagiTextWidth(kText, QaDbObjectId(), 3.5, 0.8));
  }
  EXPECT_EQ(qadbTextWidth(kText, QaDbObjectId(), 3.5, 0.8), estimate());
}

TEST(QaHostSession, HoldsServicesAndChannelAndClosesTheDrawingsAtTheEnd) {
  QaEdScriptedIO outer, inner;
  QaEdUserIOScope before(outer);
  {
    QaHostSession session(inner);
    EXPECT_EQ(&qaedUserIO(), &inner);
    EXPECT_NE(qaServiceDictionary().at(KRM_STD_SERVICE), nullptr);
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "a.dxf");
    EXPECT_EQ(qaDocManager().documentCount(), 1);
  }
  EXPECT_EQ(&qaedUserIO(), &outer);
  EXPECT_EQ(qaServiceDictionary().at(KRM_STD_SERVICE), nullptr);
  EXPECT_EQ(qaDocManager().documentCount(), 0);
}

TEST(QaHostSession, OpeningAnUnreadableDrawingSaysWhy) {
  QaEdScriptedIO io;
  QaHostSession session(io);
  std::string error;
  EXPECT_EQ(session.openDrawing("/nonexistent/drawing.dxf", &error), nullptr);
  EXPECT_NE(error.find("drawing.dxf"), std::string::npos) << error;
}

}  // namespace
