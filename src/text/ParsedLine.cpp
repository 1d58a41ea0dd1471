#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "text/Classifier.h"

namespace vendrel {

CodeLine ParsedLine::Record() const {
  CodeLine record;
  record.LineType = LineType;
  record.Continued = Continued;
  record.Continuation = Continuation;
  record.Text = Text;
  record.StatementPart = StatementPart;
  record.CommentPart = CommentPart;
  record.MoreLines = MoreLines;
  record.Remainder = Remainder;
  record.NotInSource = NotInSource;
  record.EventIndex = EventIndex;
  return record;
}

ParsedLine ParsedLine::Of(const CodeLine& record) {
  ParsedLine line;
  line.LineType = record.LineType;
  line.Continued = record.Continued;
  line.Continuation = record.Continuation;
  line.MoreLines = record.MoreLines;
  line.NotInSource = record.NotInSource;
  line.OwnText = true;
  line.EventIndex = record.EventIndex;
  line.Text = record.Text;
  line.StatementPart = record.StatementPart;
  line.CommentPart = record.CommentPart;
  line.Remainder = record.Remainder;
  return line;
}

CodeLine InitialiseCodeLine(std::string_view Text, LanguageVersionEnum LanguageVersion,
                            const ReadingRules& reading) try {
  LineClassifier classifier(LanguageVersion, reading);
  ParsedLine line;
  if (classifier.First(Text, line) == LineClassifier::Result::MissingWord) {
    throw VendrelError(errSubscript,
                       "the statement needs another word: " + std::string(Trim(Text)));
  }
  return line.Record();
}
VENDREL_CONTEXT(Text, LanguageVersion)

}  // namespace vendrel
