#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addMerge() {
    CLI::App *command = addCommand(
        "merge", "Join FED files that share their upper classes into one",
        "Classes and spaces of the same name become one, with the members of all files; what several files declare "
        "alike is declared once. Comments are kept. The order is that of the first file. For each file, standard error "
        "says how the merged model differs from it and, if the file loads, how many handles moved.\n\n"
        "Declarations that differ are conflicts. Each is reported with both places, and nothing is written. modules.md "
        "of the documentation has the rules.\n\n"
        "Exit status:\n"
        "  0  merged, and the result loads\n"
        "  1  a conflict or a syntax error, and nothing is written; or the result, which is written, does not load\n"
        "  2  wrong usage, or a file that cannot be opened or written\n\n"
        "Examples:\n"
        "  rtifed merge harbour.fed traffic.fed -o all.fed\n"
        "  rtifed merge --first-mom harbour.fed old-traffic.fed | rtifed check -",
        [this] { return merge(_merge, _console); });
    command
        ->add_option("FILE", _merge.files,
                     "FED text; - is standard input, a folder stands for the .fed files in it and its folders, except "
                     "the file to write")
        ->option_text(" ")
        ->required();
    command->add_option("-o,--output", _merge.output, "Write to this file, not to standard output")
        ->option_text("FILE");
    command->add_flag(
        "--first-mom", _merge.firstMom,
        "Where transportations, orderings, spaces or security levels in the Management Object Models (MOM) differ, "
        "take those of the first file that has the declaration");
}

void CommandLine::addExtract() {
    CLI::App *command = addCommand(
        "extract", "Write the part of a FED file that some classes need",
        "Writes these classes with their superclasses and all members, the spaces, and what every model has: the root "
        "classes, RTIprivate and the Management Object Model (MOM). A space that only other classes use is left "
        "out.\n\n"
        "CLASS is a full dotted name, with or without its root, or the end of one, in any letter case. A name that "
        "both an object class and an interaction class have means both.\n\n"
        "Exit status:\n"
        "  0  written, and the result loads\n"
        "  1  a syntax error, or there is no such class, and nothing is written; or the result, which is written, does "
        "not load\n"
        "  2  wrong usage, or a file that cannot be opened or written\n\n"
        "Examples:\n"
        "  rtifed extract harbour.fed Tug Collision -o tug.fed\n"
        "  rtifed extract --subclasses harbour.fed Craft",
        [this] { return extract(_extract, _console); });
    addOperand(command, "FILE", _extract.fileName, "FED text; - is standard input")->required();
    addOperand(command, "CLASS", _extract.classNames, "A class to extract")->required();
    command->add_option("-o,--output", _extract.output, "Write to this file, not to standard output")
        ->option_text("FILE");
    command->add_flag("--subclasses", _extract.subclasses, "Extract the subclasses of each CLASS as well");
}

void CommandLine::addConstants() {
    CLI::App *command = addCommand(
        "constants", "Write the names of a model as constants in C++, Java or Python",
        "Each class is a scope in that of its superclass, with a constant for its full name and one for each member, "
        "inherited ones included. So a compiler finds a misspelt name. The comments of the file document the "
        "constants. constants.md of the documentation says how names become identifiers.\n\n"
        "With --handles there are also the handles, the SHA-256 fingerprint of the model to which they belong, and a "
        "function that compares it. That needs a file that loads. Without --handles the file need not load, but the "
        "exit status is 1 then, and nothing is written if it has syntax errors.\n\n"
        "Examples:\n"
        "  rtifed constants harbour.fed --language c++ -o harbour.hh\n"
        "  rtifed constants harbour.fed --language java --scope org.example.Harbour -o Harbour.java\n"
        "  rtifed constants harbour.fed --language python --handles -o harbour.py",
        [this] {
            if (_constants.language == &kPythonConstants && !_constants.scope.empty())
                throw CLI::ValidationError("--scope", "only with --language c++ or java; in Python the module is the "
                                                      "scope");
            return constants(_constants, _console);
        });
    addOperand(command, "FILE", _constants.fileName, kFile)->required();
    addChoice(command, "--language", _constants.language,
              {{"c++", &kCppConstants}, {"java", &kJavaConstants}, {"python", &kPythonConstants}}, "LANGUAGE",
              "The language: c++ (C++11 or later), java or python (Python 3)");
    command->get_option("--language")->required();
    command->add_flag("--handles", _constants.handles, "Write the handles as well");
    command
        ->add_option(
            "--scope", _constants.scope,
            "The namespaces, or the package and class, around the constants, separated by dots (by default the "
            "name of the federation; of a Java file, its name)")
        ->option_text("SCOPE");
    command->add_option("-o,--output", _constants.output, "Write to this file, not to standard output")
        ->option_text("FILE");
}
