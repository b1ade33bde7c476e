// What of plug-in definitions the pane shows, and why not the rest.
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "ExitStatus.h"
#include "commands/Commands.h"
#include "plugins/PluginReview.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

using Weight = PluginFinding::Weight;

const char* nameOf(Weight weight) {
  switch (weight) {
    case Weight::LeftOut:
      return "left-out";
    case Weight::Hidden:
      return "hidden";
    case Weight::Warning:
      break;
  }
  return "warning";
}

Json jsonOf(const PluginReview& review, const std::string& file) {
  Json options = Json::array();
  for (const auto& option : review.options)
    options.push_back({{"title", option.title}, {"type", option.type}, {"shown", option.isShown}});
  Json findings = Json::array();
  for (const PluginFinding& finding : review.findings) {
    findings.push_back({{"finding", nameOf(finding.weight)},
                        {"option", finding.option ? Json(*finding.option + 1) : Json()},
                        {"key", finding.key},
                        {"expected", finding.expected},
                        {"found", finding.found}});
  }
  return {{"file", file},
          {"name", review.name},
          {"shown", review.isShown},
          {"options", options},
          {"findings", findings}};
}

Colour colourOf(Weight weight) { return weight == Weight::LeftOut ? Colour::Bad : Colour::Warning; }

std::string wordsOf(const PluginFinding& finding) {
  return formatText("expected %@; found %@", {finding.expected, finding.found});
}

void addRows(const PluginReview& review, const std::string& file, std::vector<Row>& rows) {
  rows.push_back({{file, Colour::Strong},
                  {review.isShown ? "shown" : "not shown", review.isShown ? Colour::Good : Colour::Bad},
                  review.name});
  const auto addFindings = [&](std::optional<std::size_t> place) {
    for (const PluginFinding& finding : review.findings) {
      if (finding.option != place) continue;
      rows.push_back({"  " + (finding.key.empty() ? std::string("-") : finding.key),
                      {nameOf(finding.weight), colourOf(finding.weight)},
                      wordsOf(finding)});
    }
  };
  addFindings(std::nullopt);
  for (std::size_t place = 0; place < review.options.size(); ++place) {
    const auto& option = review.options[place];
    rows.push_back({formatText("  #%d %@", {std::to_string(place + 1), option.title}),
                    {option.isShown ? "shown" : "not shown", option.isShown ? Colour::Good : Colour::Bad},
                    option.type});
    addFindings(place);
  }
}

/// The files to look at: of a tree, with its reviewer.
struct Reviewed {
  Tree* tree;
  std::vector<std::string> files;
};

std::string canonical(const std::string& file) {
  std::error_code error;
  const auto path = std::filesystem::weakly_canonical(std::filesystem::absolute(file, error), error);
  return error ? file : path.string();
}

/// Each file with the tree in whose plug-ins folder it lies, else with the first one.
std::vector<Reviewed> named(const std::vector<std::string>& files, const std::vector<Tree*>& trees) {
  std::vector<Reviewed> all;
  for (Tree* tree : trees) all.push_back({tree, {}});
  for (const std::string& file : files) {
    const std::string path = canonical(file);
    const auto isHome = [&](const Reviewed& each) {
      return path.starts_with(each.tree->paths().plugins + "/");
    };
    const auto home = std::ranges::find_if(all, isHome);
    (home != all.end() ? *home : all.front()).files.push_back(path);
  }
  return all;
}

int review(const Session& session, const Reviewed& what) {
  const PluginReviewer reviewer(what.tree->platform(), what.tree->paths());
  Json all = Json::array();
  std::vector<Row> rows;
  bool leavesOut = false;
  for (const std::string& file : what.files) {
    if (session.interruption) return kOfSignal + session.interruption.signal();
    const PluginReview reviewed = reviewer.review(file);
    leavesOut = leavesOut || reviewed.leavesOut();
    const std::string shownFile = what.tree->paths().onClient(file);
    if (session.output.isJson()) {
      all.push_back(jsonOf(reviewed, shownFile));
    } else {
      addRows(reviewed, shownFile, rows);
    }
  }
  if (session.output.isJson()) {
    session.output.document({{"root", what.tree->root()}, {"definitions", all}});
  } else {
    session.output.table(rows);
  }
  return leavesOut ? kLeftOut : kDone;
}

}  // namespace

int checkDefinitions(const Session& session, const std::vector<Tree*>& trees) {
  std::vector<Reviewed> all;
  int status = kDone;
  const auto note = [&status](int next) { status = status == kDone ? next : status; };
  if (!session.arguments.words.empty()) {
    all = named(session.arguments.words, trees);
    std::erase_if(all, [](const Reviewed& each) { return each.files.empty(); });
  } else {
    for (Tree* tree : trees) {
      const auto found = PluginReviewer(tree->platform(), tree->paths()).definitions();
      if (!found) {
        note(tree->complain(formatText("%@ cannot be read", {tree->paths().plugins}), kNoClient));
        continue;
      }
      all.push_back({tree, {}});
      for (const std::string& path : *found) all.back().files.push_back(tree->paths().plugins + "/" + path);
    }
  }
  for (const Reviewed& each : all) note(review(session, each));
  return status;
}

}  // namespace corvane::cli
