#include "util/language_files.h"

namespace zel {

std::array<Text, 2> LanguageLibraryNames(TextView modulePath, TextView language) {
  size_t slash = modulePath.find_last_of(u"\\/");
  size_t nameStart = slash == TextView::npos ? 0 : slash + 1;
  TextView directory = modulePath.substr(0, slash == TextView::npos ? 0 : slash);
  TextView fileName = modulePath.substr(nameStart);
  size_t dot = fileName.rfind(u'.');
  TextView base = fileName.substr(0, dot);
  TextView extension = dot == TextView::npos ? TextView() : fileName.substr(dot);  // with its "."

  auto name = [&](TextView infix) {
    Text path;
    path.append(directory).append(u"\\").append(language).append(u"\\");
    path.append(base).append(infix).append(language).append(extension);
    return path;
  };
  return {name(u"_texts_"), name(u"_texts")};
}

}  // namespace zel
