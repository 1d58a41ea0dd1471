#include "diagnostics/TraceValue.h"

#include <cstdio>
#include <exception>

namespace vendrel {

TraceValue::TraceValue(double value) : mKind(Kind::Simple) {
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", value);
  mText = text;
}

TraceValue TraceValue::Enumerable(std::vector<std::pair<std::string, TraceValue>> items) {
  TraceValue value(Kind::Enumerable);
  value.mItems = std::move(items);
  return value;
}

TraceValue TraceValue::Array(std::vector<Dimension> dimensions, std::vector<TraceValue> elements) {
  TraceValue value(Kind::Array);
  value.mDimensions = std::move(dimensions);
  value.mItems.reserve(elements.size());
  for (TraceValue& element : elements) value.mItems.emplace_back(std::string(), std::move(element));
  return value;
}

/// Writes one value and what it holds.
class ValueDump {
 public:
  explicit ValueDump(std::string& text) : mText(text) {}

  void Write(std::string_view tag, std::string_view attributes, const TraceValue& value,
             int depth) {
    if (depth > kDeepest) return;
    Open(tag, attributes, depth);
    switch (value.mKind) {
      case TraceValue::Kind::Empty: return Line("{Empty}");
      case TraceValue::Kind::Null: return Line("{Null}");
      case TraceValue::Kind::Nothing: return Line("{Nothing}");
      case TraceValue::Kind::DataObject: return Line("{DataObject}");
      case TraceValue::Kind::Record: return Line("{UDT - " + value.mText + "}");
      case TraceValue::Kind::Failed:
        return Line("{Error " + value.mText + " formatting for output}");
      case TraceValue::Kind::Simple: WriteText(value.mText); return Close(tag);
      case TraceValue::Kind::Object: mText.append("{" + value.mText + "}"); return Close(tag);
      case TraceValue::Kind::Enumerable: WriteItems(value, depth); break;
      case TraceValue::Kind::Array:
        if (!WriteArray(tag, value, depth)) return Close(tag);
        break;
    }
    mText.append(static_cast<std::size_t>(depth), ' ');
    Close(tag);
  }

 private:
  // Values are taken from code, whose nesting is small; what is deeper is a mistake of a host.
  static constexpr int kDeepest = 64;
  static constexpr std::size_t kMostDimensions = 3;

  void Open(std::string_view tag, std::string_view attributes, int depth) {
    mText.append(static_cast<std::size_t>(depth), ' ').append("<");
    mText.append(tag).append(attributes).append(">");
  }
  void Close(std::string_view tag) { mText.append("</").append(tag).append(">\r\n"); }
  void Line(std::string_view text) { mText.append(text).append("\r\n"); }
  void WriteText(std::string_view text) {
    for (const char c : text) {
      if (c == '\0')
        mText.append("{Null}");
      else
        mText.push_back(c);
    }
  }

  void WriteItems(const TraceValue& value, int depth) {
    mText.append("\r\n");
    std::size_t index = 0;
    for (const auto& [name, item] : value.mItems) {
      ++index;
      Write(name.empty() ? "[" + std::to_string(index) + "]" : name, {}, item, depth + 1);
    }
  }

  // False where a text on the line of the tag stands in place of the elements.
  bool WriteArray(std::string_view tag, const TraceValue& value, int depth) {
    const std::vector<TraceValue::Dimension>& dimensions = value.mDimensions;
    if (dimensions.size() > kMostDimensions) {
      // The bounds are asked for one dimension more than is shown, so that is the number found.
      mText.append("{Dump truncated at " + std::to_string(kMostDimensions + 1) + " dimensions}");
      return false;
    }
    for (std::size_t i = 0; i < dimensions.size() || i == 0; ++i) {
      if (i < dimensions.size() && dimensions[i].Set) continue;
      const std::string which = i == 0 ? "" : " Dimension " + std::to_string(i + 1);
      mText.append("{UnInitialised Array" + which + "}");
      return false;
    }
    mText.append("\r\n");
    WriteElements(tag, value, depth);
    return true;
  }

  void WriteElements(std::string_view tag, const TraceValue& value, int depth) {
    static const TraceValue empty;
    std::vector<std::int32_t> index;
    for (const TraceValue::Dimension& dimension : value.mDimensions) {
      if (dimension.Upper < dimension.Lower) return;
      index.push_back(dimension.Lower);
    }
    for (std::size_t element = 0;; ++element) {
      std::string attributes = " Index=\"";
      for (std::size_t i = 0; i < index.size(); ++i)
        attributes.append(i == 0 ? "" : ",").append(std::to_string(index[i]));
      attributes.append("\"");
      Write(tag, attributes, element < value.mItems.size() ? value.mItems[element].second : empty,
            depth + 1);
      if (!Next(value.mDimensions, index)) return;
    }
  }

  // The next index, the last dimension fastest; false behind the end.
  static bool Next(const std::vector<TraceValue::Dimension>& dimensions,
                   std::vector<std::int32_t>& index) {
    for (std::size_t i = index.size(); i-- > 0;) {
      if (++index[i] <= dimensions[i].Upper) return true;
      index[i] = dimensions[i].Lower;
    }
    return false;
  }

  std::string& mText;
};

std::string DumpValue(std::string_view name, const TraceValue& value, int depth) {
  std::string text;
  try {
    ValueDump(text).Write(name.substr(0, name.find(' ')), {}, value, depth);
  } catch (const std::exception&) {
    text = "{Error 14 formatting for output}\r\n";
  }
  return text;
}

}  // namespace vendrel
