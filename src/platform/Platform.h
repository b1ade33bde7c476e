// The bundle of services that one operating system and one toolkit give to the core. Holds references only;
// whoever builds a platform keeps the services alive longer than the pane.
#pragma once

#include "platform/Authorization.h"
#include "platform/Bundle.h"
#include "platform/Dialogs.h"
#include "platform/DirectoryEvents.h"
#include "platform/FileEventQueues.h"
#include "platform/Files.h"
#include "platform/ProcessListing.h"
#include "platform/PropertyListFiles.h"
#include "platform/RunLoop.h"
#include "platform/SystemLog.h"
#include "platform/TextComparison.h"
#include "platform/Workspace.h"

namespace corvane {

struct Platform {
  SystemLog& log;
  Files& files;
  PropertyListFiles& propertyLists;
  RunLoop& runLoop;
  DirectoryEvents& directoryEvents;
  FileEventQueues& fileEventQueues;
  AuthorizationServices& authorization;
  ProcessListing& processes;
  TextComparison& texts;
  Dialogs& dialogs;
  Workspace& workspace;
  Bundle& bundle;
};

/// The part of it that a toolkit gives, for whoever composes the rest.
struct ToolkitServices {
  Dialogs& dialogs;
  Workspace& workspace;
  Bundle& bundle;
};

}  // namespace corvane
