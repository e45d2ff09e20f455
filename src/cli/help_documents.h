// Help, schema and version documents of the `zorvik` command line.
//
// Every help topic exists twice with the same facts: a text for people and a JSON document for
// agents. `schemaDocument` publishes the whole command tree as one JSON document. The documents are
// plain data built on each call; the root document's discoverability hints follow the process-wide
// program path (version_info.h). Failures in the `help` argument walk throw
// ZorvikCLIError::invalidArguments; nothing else throws. All functions are thread-safe.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cli/version_info.h"
#include "foundation/json/any_codable_value.h"

namespace zorvik {

enum class HelpTopic { root, project, runtime, agent, doctor, schema };

// The text form of a topic: one block ending with "\n".
std::string helpText(HelpTopic topic);

// The JSON form of a topic: the root document for `root`, else that command's document.
AnyCodableValue helpPayload(HelpTopic topic);

// The root document: name, version, summary, usage, global_flags, machine_readable,
// discoverability, environment, exit_codes (0..8) and commands (project, runtime, agent, doctor,
// schema, help, version).
AnyCodableValue rootHelpPayload();

// {"schema_version": 1, "format": "zorvik_cli_schema", "cli": rootHelpPayload()}.
AnyCodableValue schemaDocument();

// Writes the help of `topic` to `out`: pretty JSON and a newline when `asJSON`, else the text.
void printHelp(std::ostream& out, HelpTopic topic, bool asJSON);

// `zorvik help [<topic>] [--json]`. Walks the arguments: "--json" selects JSON; "-h"/"--help"
// stops the walk and prints the root help at once (JSON when "--json" came before it); any other
// word starting with "-" is "Unknown option: <word>"; the first plain word is the topic, a second
// one is an error. The topic is matched after trimming and lower-casing; an empty topic is the
// root. Unknown topics are reported as typed.
void runHelp(const std::vector<std::string>& arguments, std::ostream& out);

}  // namespace zorvik
