#include "diagnostics/log_offer.h"

namespace vantrel {

bool OfferErrorLog(MessagePort& messages) {
    return messages.Ask({"Errors Occurred",
                         "Errors were encountered during the comparison.\r\n\r\n"
                         "See the file ERRORLOG.TXT for details.\r\n\r\n"
                         "Would you like to view the log file now?",
                         MessageIcon::Stop, MessageButtons::YesNo}) == MessageAnswer::Yes;
}

}  // namespace vantrel
