#include "tool/console/InputFile.hh"

#include "tool/console/Console.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

std::string readSmallFile(const std::string &fileName, const std::string &name, std::size_t longest) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(fileName.c_str(), "rb"), &std::fclose);
    std::string contents, chunk(65536, '\0');
    while (file && contents.size() <= longest) {
        const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), file.get());
        if (size == 0)
            break;
        contents.append(chunk, 0, size);
    }
    if (!file || std::ferror(file.get()))
        throw CannotWork(name + ": " + std::strerror(errno));
    if (contents.size() > longest)
        throw CannotWork(name + ": expected at most " + std::to_string(longest) + " bytes, found more");
    return contents;
}
