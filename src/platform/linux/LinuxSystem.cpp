#include "platform/linux/LinuxSystem.h"

#include <utility>

namespace corvane {
namespace {

LinuxAuthorization::Options authorizationOptions(Bundle& bundle, LinuxSystem::Options options) {
  LinuxAuthorization::Options result;
  result.root = std::move(options.root);
  result.helper = bundle.pathForAuxiliaryExecutable("qlhelper");
  result.waitForOutput = std::move(options.waitForOutput);
  return result;
}

}  // namespace

LinuxSystem::LinuxSystem(LinuxRunLoop& runLoop, const ToolkitServices& toolkit, Options options)
    : log_(options.log != nullptr ? *options.log : systemLog_),
      directoryEvents_(runLoop, log_),
      fileEventQueues_(runLoop),
      authorization_(runLoop, log_, authorizationOptions(toolkit.bundle, std::move(options))),
      platform_{
          log_,           files_,     propertyLists_, runLoop,         directoryEvents_,  fileEventQueues_,
          authorization_, processes_, texts_,         toolkit.dialogs, toolkit.workspace, toolkit.bundle} {}

}  // namespace corvane
