#pragma once

#include "ports/Account.h"
#include "ports/Background.h"
#include "ports/Clock.h"
#include "ports/EventLoop.h"
#include "ports/FilePanel.h"
#include "ports/LanguageModel.h"
#include "ports/Notifications.h"
#include "ports/OwnerAuthentication.h"
#include "ports/PdfText.h"
#include "ports/Processes.h"
#include "ports/Ticker.h"

namespace kelvo {

/// Everything the engine asks of the platform. What is referred to must outlive the engine.
struct Ports {
    Clock& clock;
    Ticker& ticker;
    EventLoop& eventLoop;
    Account& account;
    OwnerAuthentication& authentication;
    Notifications& notifications;
    FilePanel& filePanel;
    PdfText& pdfText;
    Processes& processes;
    LanguageModel& model;
    Background& background;
};

} // namespace kelvo
