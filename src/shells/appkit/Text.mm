#import "Text.h"

namespace corvane::appkit {
namespace {

NSColor* colorOf(TextColor color) {
  switch (color) {
    case TextColor::Gray:
      return [NSColor disabledControlTextColor];
    case TextColor::DarkGray:
      return secondaryTextColor();
    case TextColor::Red:
      return warningTextColor();
    case TextColor::Blue:
      return linkTextColor();
  }
  return [NSColor controlTextColor];
}

NSFont* plainFont(const Font& font) {
  switch (font.family) {
    case Font::Family::Arial:
      // The second has the first one's widths, where that is missing.
      for (NSString* name : {@"Arial", @"LiberationSans"}) {
        if (NSFont* found = [NSFont fontWithName:name size:font.size]) return found;
      }
      break;
    case Font::Family::User:
      return [NSFont userFontOfSize:font.size];
    case Font::Family::System:
      break;
  }
  return [NSFont systemFontOfSize:font.size];
}

NSDictionary* attributesOf(const TextAttributes& own, const TextStyle& style) {
  NSMutableDictionary* attributes = [NSMutableDictionary dictionary];
  [attributes setObject:own.font ? toNSFont(*own.font) : style.font forKey:NSFontAttributeName];
  NSColor* color = own.color ? colorOf(*own.color) : [NSColor controlTextColor];
  [attributes setObject:style.enabled ? color : [NSColor disabledControlTextColor]
                 forKey:NSForegroundColorAttributeName];
  if (own.underlined) {
    [attributes setObject:[NSNumber numberWithInt:NSUnderlineStyleSingle]
                   forKey:NSUnderlineStyleAttributeName];
  }
  NSMutableParagraphStyle* paragraph = [[[NSParagraphStyle defaultParagraphStyle] mutableCopy] autorelease];
  [paragraph setAlignment:style.alignment];
  [attributes setObject:paragraph forKey:NSParagraphStyleAttributeName];
  return attributes;
}

}  // namespace

NSString* toNSString(std::string_view text) {
  NSString* result = [[NSString alloc] initWithBytes:text.data()
                                              length:text.size()
                                            encoding:NSUTF8StringEncoding];
  if (result == nil) {
    result = [[NSString alloc] initWithBytes:text.data()
                                      length:text.size()
                                    encoding:NSISOLatin1StringEncoding];
  }
  return [result autorelease];
}

std::string fromNSString(NSString* text) {
  NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding];
  return {static_cast<const char*>([bytes bytes]), static_cast<std::size_t>([bytes length])};
}

NSFont* toNSFont(const Font& font) {
  NSFont* result = plainFont(font);
  NSFontManager* fonts = [NSFontManager sharedFontManager];
  if (font.bold) result = [fonts convertFont:result toHaveTrait:NSBoldFontMask];
  if (font.italic) result = [fonts convertFont:result toHaveTrait:NSItalicFontMask];
  return result;
}

NSFont* controlFont() { return [NSFont systemFontOfSize:[NSFont systemFontSize]]; }

NSFont* smallFont() { return [NSFont systemFontOfSize:[NSFont smallSystemFontSize]]; }

NSAttributedString* toNSAttributedString(const AttributedText& text, const TextStyle& style) {
  NSMutableAttributedString* result = [[[NSMutableAttributedString alloc] init] autorelease];
  // A line break at the end is part of some texts; it would only show as an empty line.
  const std::string_view shown = std::string_view(text.text).substr(0, text.text.find_last_not_of('\n') + 1);
  const auto append = [&](std::size_t start, std::size_t length, const TextAttributes& own) {
    if (length == 0 || start >= shown.size()) return;
    NSString* piece = toNSString(shown.substr(start, length));
    NSDictionary* attributes = attributesOf(own, style);
    [result appendAttributedString:[[[NSAttributedString alloc] initWithString:piece
                                                                    attributes:attributes] autorelease]];
  };
  std::size_t at = 0;
  for (const AttributedText::Run& run : text.runs) {
    append(at, run.start - at, {});
    append(run.start, run.length, run.attributes);
    at = run.start + run.length;
  }
  append(at, text.text.size() - at, {});
  return result;
}

double textWidth(std::string_view text, NSFont* font) {
  NSDictionary* attributes = [NSDictionary dictionaryWithObject:font forKey:NSFontAttributeName];
  return [toNSString(text) sizeWithAttributes:attributes].width;
}

}  // namespace corvane::appkit
