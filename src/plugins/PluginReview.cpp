#include "plugins/PluginReview.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "plugins/FileFolderList.h"
#include "plugins/NumberRange.h"
#include "plugins/PluginCatalogue.h"
#include "plugins/PluginDefinition.h"
#include "plugins/PluginKeys.h"
#include "plugins/PluginValidation.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

using Weight = PluginFinding::Weight;
using Place = std::optional<std::size_t>;

constexpr std::string_view kValuePath = "SettingType.Value";
constexpr std::string_view kText = "a text";
constexpr const char* kNoPropertyList = "none that can be read";
constexpr const char* kNoFile = "no such file";
constexpr std::string_view kDefinitionExtension = ".plist";

std::string counted(std::string_view what, std::size_t count) {
  return formatText("%@ of %d", {what, std::to_string(count)});
}

/// The value in a few words.
std::string foundText(const PropertyList& value) {
  switch (value.kind()) {
    case PropertyList::Kind::Nothing:
      return "nothing";
    case PropertyList::Kind::Dictionary:
      return counted("a dictionary", value.asDictionary().size());
    case PropertyList::Kind::Array:
      return counted("an array", value.asArray().size());
    case PropertyList::Kind::String:
      return formatText("\"%@\"", {*value.asString()});
    case PropertyList::Kind::Boolean:
      return *value.asBoolean() ? "true" : "false";
    case PropertyList::Kind::Date:
      return "a date";
    case PropertyList::Kind::Data:
      return "data";
    case PropertyList::Kind::Integer:
    case PropertyList::Kind::Real:
      break;
  }
  return description(value);
}

void warn(PluginReview& review, Place place, std::string_view key, std::string_view expected,
          std::string found) {
  review.findings.push_back(
      {Weight::Warning, place, std::string(key), std::string(expected), std::move(found)});
}

void warn(PluginReview& review, Place place, std::string_view key, std::string_view expected,
          const PropertyList& found) {
  warn(review, place, key, expected, foundText(found));
}

/// What stands at a key of an omission, which can have a dot.
PropertyList valueAt(const Dictionary& dictionary, std::string_view key) {
  const auto dot = key.find('.');
  if (dot == std::string_view::npos) return dictionary.value(key);
  return dictionary.dictionary(key.substr(0, dot)).value(key.substr(dot + 1));
}

void leaveOut(PluginReview& review, Place place, const Omission& omission, const PropertyList& thing) {
  const PropertyList found = omission.key.empty() ? thing : valueAt(thing.asDictionary(), omission.key);
  review.findings.push_back(
      {Weight::LeftOut, place, std::string(omission.key), std::string(omission.expected), foundText(found)});
}

bool isAddress(const PropertyList& value) {
  const std::string* text = value.asString();
  return text != nullptr && hasPrefixIgnoringCase(*text, kAddressPrefix);
}

bool isFormatKey(std::string_view key) {
  constexpr std::string_view kKnown[] = {plugin_key::kTitle,       plugin_key::kTitleHint,
                                         plugin_key::kSettingType, plugin_key::kStoragePath,
                                         plugin_key::kStorageKey,  plugin_key::kDetailsUrl};
  return std::ranges::find(kKnown, key) != std::ranges::end(kKnown);
}

bool isCatalogueKey(std::string_view key) {
  return key == plugin_key::kCheckboxes || key == plugin_key::kFileFolderArray ||
         key == plugin_key::kFileFolderRows;
}

/// Whether the type keeps anything in its storage file.
bool stores(const SettingType& type) {
  return type.name != setting_type::kDisplayOnly && type.name != setting_type::kPluginValidation;
}

/// A text of which the number is all, but for blanks around it.
bool isWholeNumber(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

void reviewRange(const PluginOption& option, std::size_t place, PluginReview& review) {
  const PropertyList value = option.value();
  const std::string* text = value.asString();
  const auto range = text != nullptr ? parseNumberRange(*text) : std::nullopt;
  if (!range) {
    warn(review, place, kValuePath, "a range like \"min-max\" or \"min-max,step\"", value);
    return;
  }
  const auto pieces = split(*text, ',');
  const auto limits = split(pieces.front(), '-');
  const auto isNoNumber = [](const std::string& piece) { return !isWholeNumber(piece); };
  if (std::ranges::any_of(limits, isNoNumber) || (pieces.size() == 2 && isNoNumber(pieces[1]))) {
    warn(review, place, kValuePath, "decimal digits on both sides of \"-\" and as the step", value);
  } else if (pieces.size() > 2) {
    warn(review, place, kValuePath, "at most one step", value);
  } else if (range->step < 1) {
    warn(review, place, kValuePath, "a step of at least 1", value);
  } else if (range->minimum > range->maximum) {
    warn(review, place, kValuePath, "a minimum that is not above the maximum", value);
  } else if (static_cast<std::int64_t>(range->maximum) - range->minimum >=
             static_cast<std::int64_t>(range->step) * static_cast<std::int64_t>(kLongestNumberList)) {
    warn(review, place, kValuePath,
         formatText("a range of at most %d numbers", {std::to_string(kLongestNumberList)}), value);
  }
}

void reviewMenu(const PluginOption& option, std::size_t place, PluginReview& review) {
  const Array titles = option.value().asArray();
  if (titles.empty()) {
    warn(review, place, kValuePath, "an array of at least one title", option.value());
  }
  for (const PropertyList& title : titles.elements()) {
    if (title.asString() == nullptr) warn(review, place, kValuePath, "titles that are texts", title);
  }
}

/// What the type makes of its parameter.
void reviewParameter(const PluginOption& option, std::size_t place, PluginReview& review) {
  using Editor = SettingType::Editor;
  const PropertyList value = option.value();
  const bool isLength = isNumber(value) || (value.asString() != nullptr && isWholeNumber(*value.asString()));
  switch (option.settingType().editor) {
    case Editor::Number:
      reviewRange(option, place, review);
      break;
    case Editor::Menu:
      reviewMenu(option, place, review);
      break;
    case Editor::Text:
    case Editor::Username:
      if (value && !isLength) warn(review, place, kValuePath, "a length in characters, or nothing", value);
      break;
    case Editor::Password:
      if (intValue(value) == 0) {
        warn(review, place, kValuePath, "a length of at least 1; without it nothing can be typed", value);
      }
      break;
    default:
      if (!option.isOfType(setting_type::kCheckbox)) break;
      const std::string* sense = value.asString();
      if (sense == nullptr || (*sense != checkbox_value::kPositive && *sense != checkbox_value::kNegative)) {
        warn(review, place, kValuePath, "\"Positive\" or \"Negative\"; without it nothing is stored", value);
      }
      break;
  }
}

void reviewLink(const PluginOption& option, std::size_t place, PluginReview& review) {
  const PropertyList link = option.dictionary().value(plugin_key::kDetailsUrl);
  if (!link) return;
  if (!isAddress(link)) {
    warn(review, place, plugin_key::kDetailsUrl, "a text that begins with \"http\"", link);
  } else if (option.settingType().rows == SettingType::Rows::One) {
    // The row that is shown in its place repeats the value.
    warn(review, place, plugin_key::kDetailsUrl, "a type that shows its link", option.type());
  }
}

void reviewTexts(const PluginOption& option, std::size_t place, PluginReview& review) {
  const Dictionary dictionary = option.dictionary();
  const auto expectText = [&](std::string_view key, std::string_view expected) {
    const PropertyList value = dictionary.value(key);
    if (value.asString() == nullptr) warn(review, place, key, expected, value);
  };
  expectText(plugin_key::kTitle, kText);
  expectText(plugin_key::kTitleHint, "a text, which may be empty");
  if (!stores(option.settingType())) return;
  expectText(plugin_key::kStorageKey, "a text; without it nothing is read or stored");
  const PropertyList path = dictionary.value(plugin_key::kStoragePath);
  if (path.asString() == nullptr || !path.asString()->starts_with('/')) {
    warn(review, place, plugin_key::kStoragePath, "an absolute path; without it nothing is read or stored",
         path);
  }
}

void reviewKeys(const PluginOption& option, std::size_t place, PluginReview& review) {
  for (const auto& [key, value] : option.dictionary().entries()) {
    if (isCatalogueKey(key)) {
      warn(review, place, key, "nothing; the pane adds this itself", value);
    } else if (key.starts_with("Setting") && !isFormatKey(key)) {
      warn(review, place, key, "a key of the format", value);
    }
  }
}

void reviewOption(const PropertyList& element, std::size_t place, PluginReview& review) {
  const PluginOption option(element.asDictionary());
  const Omission omission = omissionOfOption(element);
  review.options.push_back({option.title(), option.type(), !omission});
  if (omission) {
    leaveOut(review, place, omission, element);
    return;
  }
  reviewTexts(option, place, review);
  reviewParameter(option, place, review);
  reviewLink(option, place, review);
  reviewKeys(option, place, review);
}

void reviewNames(const PropertyList& stored, std::size_t place, const std::string& at, PluginReview& review) {
  const Dictionary names = stored.asDictionary();
  if (names.empty()) warn(review, place, at, "a dictionary of names; without it there are no rows", stored);
  for (const auto& [text, state] : names.entries()) {
    const PropertyList name = PropertyList::string(text);
    if (isAddress(name)) warn(review, place, at, "names that are no addresses; such a row is a link", name);
  }
}

void reviewEntries(const PropertyList& stored, std::size_t place, const std::string& at,
                   PluginReview& review) {
  const auto& entries = stored.asArray().elements();
  const auto isAdd = [](const PropertyList& entry) {
    return entry.asString() != nullptr && isAddEntry(*entry.asString());
  };
  if (std::ranges::none_of(entries, isAdd)) {
    warn(review, place, at, formatText("a list with \"%@\"; without it nothing can be added", {kAddEntry}),
         stored);
  }
  for (const PropertyList& entry : entries) {
    if (entry.asString() == nullptr) warn(review, place, at, "entries that are texts", entry);
    if (isAddress(entry)) {
      warn(review, place, at, "entries that are no addresses; such a row is a link", entry);
    }
  }
}

bool isInRange(const PluginOption& option, const PropertyList& stored) {
  const PropertyList value = option.value();
  const auto range = value.asString() != nullptr ? parseNumberRange(*value.asString()) : std::nullopt;
  const std::int32_t number = intValue(stored);
  return isNumber(stored) && (!range || (range->minimum <= number && number <= range->maximum));
}

bool isItemOfMenu(const PluginOption& option, const PropertyList& stored) {
  const std::int64_t index = intValue(stored);
  return isNumber(stored) && index >= 0 && index < static_cast<std::int64_t>(option.value().asArray().size());
}

/// What the storage file holds for the option.
void reviewStored(const PluginOption& option, const PropertyList& stored, std::size_t place,
                  PluginReview& review) {
  const SettingType& type = option.settingType();
  const std::string at = formatText("%@: %@", {option.storagePath(), option.storageKey()});
  if (type.rows == SettingType::Rows::Names) {
    reviewNames(stored, place, at, review);
  } else if (type.rows == SettingType::Rows::Entries) {
    reviewEntries(stored, place, at, review);
  } else if (!stored) {
    return;
  } else if (type.editor == SettingType::Editor::Number && !isInRange(option, stored)) {
    warn(review, place, at, "a number within the range", stored);
  } else if (type.editor == SettingType::Editor::Menu && !isItemOfMenu(option, stored)) {
    warn(review, place, at, "the number of a title, counted from 0", stored);
  } else if (type.showsValue && type.editor != SettingType::Editor::Number &&
             type.editor != SettingType::Editor::Menu && stored.asString() == nullptr) {
    // Not what it is: it may be a password.
    warn(review, place, at, kText, std::string("something else"));
  }
}

bool isTested(const PluginReview& review) {
  return std::ranges::any_of(review.options, [](const PluginReview::Option& option) {
    return option.isShown && option.type == setting_type::kPluginValidation;
  });
}

void reviewCommand(const Dictionary& definition, PluginReview& review) {
  const PropertyList given = definition.value(plugin_key::kProgramArguments);
  const Array arguments = programArguments(definition);
  if (given && !given.asArray()) {
    warn(review, {}, plugin_key::kProgramArguments, "an array of texts", given);
  } else if (given && arguments.size() != given.asArray().size()) {
    const auto isNoText = [](const PropertyList& element) { return element.asString() == nullptr; };
    warn(review, {}, plugin_key::kProgramArguments, "an array of texts",
         *std::ranges::find_if(given.asArray().elements(), isNoText));
  } else if (isTested(review) && arguments.empty()) {
    warn(review, {}, plugin_key::kProgramArguments, "the executable that is tested", given);
  } else if (isTested(review) && !isBelowPluginsFolder(*arguments.at(0).asString())) {
    warn(review, {}, plugin_key::kProgramArguments, "an executable below the plug-ins folder",
         arguments.at(0));
  }
}

/// The path below the folder; nothing for one that lies elsewhere.
std::optional<std::string> below(const std::string& folder, const std::string& path) {
  if (!path.starts_with(folder + "/")) return std::nullopt;
  return path.substr(folder.size() + 1);
}

}  // namespace

bool PluginReview::leavesOut() const {
  return std::ranges::any_of(findings,
                             [](const PluginFinding& finding) { return finding.weight == Weight::LeftOut; });
}

void PluginReview::setHidden() {
  isShown = false;
  for (Option& option : options) option.isShown = false;
}

PluginReview reviewDefinition(const PropertyList& contents) {
  PluginReview review;
  const Dictionary definition = contents.asDictionary();
  const std::string* name = definition.string(plugin_key::kName);
  if (name != nullptr) review.name = *name;
  const auto& options = definition.array(plugin_key::kOptions).elements();
  for (std::size_t place = 0; place < options.size(); ++place) reviewOption(options[place], place, review);
  if (const Omission omission = omissionOfDefinition(contents)) {
    leaveOut(review, {}, omission, contents);
    return review;
  }
  review.isShown = true;
  if (name == nullptr) warn(review, {}, plugin_key::kName, kText, definition.value(plugin_key::kName));
  reviewCommand(definition, review);
  return review;
}

std::optional<std::vector<std::string>> PluginReviewer::definitions() const {
  auto found = platform_.files.walk(paths_.plugins);
  if (found) {
    std::erase_if(*found, [](const std::string& path) {
      return path.size() <= kDefinitionExtension.size() ||
             !hasPrefixIgnoringCase(path.substr(path.size() - kDefinitionExtension.size()),
                                    kDefinitionExtension);
    });
  }
  return found;
}

PluginReview PluginReviewer::review(const std::string& file) const {
  const PropertyList contents = platform_.propertyLists.read(file);
  PluginReview review = reviewDefinition(contents);
  if (!contents) {
    review.findings.front().found = platform_.files.exists(file) ? kNoPropertyList : kNoFile;
  }
  if (const Omission omission = omissionByExtension(file)) {
    leaveOut(review, {}, omission, PropertyList::string(pathExtension(file)));
    review.setHidden();
  }
  const auto relative = below(paths_.plugins, file);
  if (!review.isShown || !relative) return review;
  reviewSettings(deletingPathExtension(*relative), review);
  reviewExecutable(contents.asDictionary(), review);
  for (std::size_t place = 0; place < review.options.size(); ++place) {
    const PropertyList element = contents.asDictionary().array(plugin_key::kOptions).at(place);
    if (review.options[place].isShown) reviewStorage(PluginOption(element.asDictionary()), place, review);
  }
  return review;
}

void PluginReviewer::reviewSettings(const std::string& fileName, PluginReview& review) const {
  const std::string file = pluginSettingsFile(paths_, fileName);
  const Dictionary settings = storage_.readFile(file);
  const Omission omission = omissionBySettings(settings);
  if (!omission) return;
  review.setHidden();
  const PropertyList found = settings ? settings.value(omission.key) : platform_.propertyLists.read(file);
  review.findings.push_back(
      {found && settings ? Weight::Hidden : Weight::LeftOut,
       {},
       formatText("%@%@%@", {paths_.onClient(file), settings ? ": " : "", omission.key}),
       std::string(omission.expected),
       foundText(found)});
}

void PluginReviewer::reviewExecutable(const Dictionary& definition, PluginReview& review) const {
  const Array arguments = programArguments(definition);
  if (!isTested(review) || arguments.empty() || !isBelowPluginsFolder(*arguments.at(0).asString())) return;
  if (platform_.files.exists(appendingPathComponent(paths_.plugins, *arguments.at(0).asString()))) return;
  warn(review, {}, plugin_key::kProgramArguments, "an executable that exists", arguments.at(0));
}

void PluginReviewer::reviewStorage(const PluginOption& option, std::size_t place,
                                   PluginReview& review) const {
  const SettingType& type = option.settingType();
  const std::string file = storage_.fileOf(option);
  // What only root can read is not looked at.
  const bool isRoots = hasPrefixIgnoringCase(option.storagePath(), kRootHomePrefix);
  if (!stores(type) || !option.storageKeyObject() || file.empty() || isRoots) return;
  const std::string path = option.storagePath();
  const Dictionary contents = storage_.readFile(file);
  if (!contents && platform_.files.exists(file)) {
    warn(review, place, path, "a property list that is a dictionary", std::string(kNoPropertyList));
    return;
  }
  if (!contents && !PluginStorage::mayBeCreated(path)) {
    warn(review, place, path, "a file that is there, or a path where it may be made", std::string(kNoFile));
    return;
  }
  reviewStored(option, contents.value(option.storageKey()), place, review);
}

}  // namespace corvane
