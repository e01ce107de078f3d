#include "tool/commands/Commands.hh"
#include "tool/model/Fingerprint.hh"
#include "tool/model/Manifest.hh"
#include "tool/report/FileFindings.hh"

Status checksum(const ChecksumOptions &options, const Console &console) {
    return forEachFile(options.fileNames, console, [&](const Input &input) {
        const auto model = loadModel(input, console.err);
        if (model)
            console.out << manifestText({options.sha256 ? fingerprint(*model) : checksumText(*model), input.name})
                        << '\n';
        return model != nullptr;
    });
}
