#include "host/ed/qaed_user_io.h"

#include "host/ed/qa_message_box.h"

namespace {

// The channel of a process that installed none: nobody is there to answer.
class UnattendedIO : public QaEdUserIO {
 public:
  void print(std::wstring_view) override {}
  QaEdInput request(const QaEdRequest&) override { return QaEdInput::cancel(); }
  int messageBox(std::wstring_view, std::wstring_view, unsigned type) override { return qaSafestButton(type); }
};

QaEdUserIO* g_current = nullptr;

}  // namespace

QaEdUserIO& qaedUserIO() {
  static UnattendedIO unattended;
  return g_current ? *g_current : unattended;
}

QaEdUserIOScope::QaEdUserIOScope(QaEdUserIO& io) : previous_(g_current) { g_current = &io; }

QaEdUserIOScope::~QaEdUserIOScope() { g_current = previous_; }
