#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addChecksum() {
    CLI::App *command = addCommand(
        "checksum", "Print the checksum of each model, to compare models, or check a list",
        "Prints eight hexadecimal digits (with --sha256 sixty-four), two blanks and the file name. All copies of a\n"
        "model have the same checksum, whatever their file names, comments and layout. The processes of a federation\n"
        "compare the short one; only the long one identifies a model.\n\n"
        "Examples:\n"
        "  rtifed checksum harbour.fed\n"
        "  rtifed checksum --sha256 *.fed >MANIFEST\n"
        "  rtifed checksum --check MANIFEST",
        [this] { return checksum(_checksum, _console); });
    addOperand(command, "FILE", _checksum.fileNames, std::string(kFileOrFolder) + "; with --check, a list of checksums")
        ->required();
    CLI::Option *check = command->add_flag("--check,-c", _checksum.check, "Check the files that FILE lists");
    command->add_flag("--sha256", _checksum.sha256, "Print SHA-256 fingerprints")->excludes(check);
    command->add_flag("--quiet", _checksum.quiet, "Do not print OK for each matching file")->needs(check);
    command->add_flag("--status", _checksum.silent, "Print nothing, only set the exit status")->needs(check);
    command->add_flag("--ignore-missing", _checksum.ignoreMissing, "Skip files that do not exist")->needs(check);
    command->add_flag("--strict", _checksum.strict, "Fail on improperly formatted lines")->needs(check);
}

void CommandLine::addSave() {
    CLI::App *command =
        addCommand("save", "Write the saved image of a model, for other processes to restore",
                   "An existing image is replaced whole, or not at all, even if the command is interrupted. A file of "
                   "another kind is not replaced. A file that is called - is written as ./-.\n\n"
                   "Examples:\n"
                   "  rtifed save harbour.fed harbour.img\n"
                   "  rtifed save harbour.fed - | ssh host 'cat >harbour.img'",
                   [this] { return save(_fileName, _otherName, _console); });
    addOperand(command, "FED", _fileName, kFile)->required();
    addOperand(command, "IMAGE", _otherName, "The image to write; - is standard output")->required();
}
