#include "Operations.h"

#include "platform/Error.h"
#include "platform/Files.h"

namespace tv::test {
namespace {

namespace fs = std::filesystem;

const std::string before(70'000, 'o');
const std::string after(130'000, 'n');

void oldFile(const fs::path& folder) {
    files::writeAll(folder / "a.xml", before);
}

/// Empty when the file is the old one, or, where the operation says so, the new one.
std::string oldOrNew(const fs::path& folder, Ending ending, const std::string& newBytes) {
    const fs::path file = folder / "a.xml";
    return ending == Ending::Done ? notOneOf(file, {newBytes}) : notOneOf(file, {before, newBytes});
}

TEST(FileFaults, AFileIsReplacedWholeOrNotAtAll) {
    for (const files::Flush flush : {files::Flush::no, files::Flush::toDisk}) {
        tryAllFaults({oldFile,
                      [flush](const fs::path& folder) {
                          files::replaceWhole(folder / "a.xml", after, flush);
                          return Ending::Done;
                      },
                      [](const fs::path& folder, Ending ending) { return oldOrNew(folder, ending, after); }});
    }
}

TEST(FileFaults, ALinkStaysALink) {
    tryAllFaults({[](const fs::path& folder) {
                      oldFile(folder);
                      fs::create_symlink(folder / "a.xml", folder / "link.xml");
                  },
                  [](const fs::path& folder) {
                      files::replaceWhole(folder / "link.xml", after);
                      return Ending::Done;
                  },
                  [](const fs::path& folder, Ending ending) {
                      return ending == Ending::Done || fs::is_symlink(folder / "link.xml")
                                 ? std::string()
                                 : "the link is gone";
                  }});
}

TEST(FileFaults, AnAppendedTextIsThereWholeOrNotAtAll) {
    tryAllFaults(
        {oldFile,
         [](const fs::path& folder) {
             files::append(folder / "a.xml", after);
             return Ending::Done;
         },
         [](const fs::path& folder, Ending ending) { return oldOrNew(folder, ending, before + after); }});
}

TEST(FileFaults, APlaceIsWrittenOverWholeOrNotAtAll) {
    std::string written = before;
    written.replace(60'000, after.size(), after);
    tryAllFaults({oldFile,
                  [](const fs::path& folder) {
                      files::writeAt(folder / "a.xml", 60'000, after);
                      return Ending::Done;
                  },
                  [&](const fs::path& folder, Ending ending) { return oldOrNew(folder, ending, written); }});
}

TEST(FileFaults, ANewFileIsThereWholeOrNotAtAll) {
    tryAllFaults({[](const fs::path&) {},
                  [](const fs::path& folder) {
                      files::create(folder / "a.xml", after);
                      return Ending::Done;
                  },
                  [](const fs::path& folder, Ending ending) {
                      return ending == Ending::Done ? notOneOf(folder / "a.xml", {after})
                                                    : notOneOf(folder / "a.xml", {nothing, after});
                  }});
}

TEST(FileFaults, ANewFileNeverTakesThePlaceOfAnother) {
    tryAllFaults({oldFile,
                  [](const fs::path& folder) {
                      try {
                          files::create(folder / "a.xml", after);
                      } catch (const Error&) {
                          return Ending::Done;
                      }
                      return Ending::Silent;
                  },
                  [](const fs::path& folder, Ending) { return notOneOf(folder / "a.xml", {before}); }});
}

TEST(FileFaults, AFileIsReadWholeOrTheReaderIsTold) {
    tryAllFaults({oldFile,
                  [](const fs::path& folder) {
                      return files::readAll(folder / "a.xml") == before ? Ending::Done : Ending::Silent;
                  },
                  [](const fs::path& folder, Ending) { return notOneOf(folder / "a.xml", {before}); }});
}

/// A moved file is at one of the two places, and whole.
std::string moved(const fs::path& from, const fs::path& to, Ending ending) {
    if (bytesOf(from) != before && bytesOf(to) != before) {
        return "the file is lost";
    }
    return ending == Ending::Done ? notOneOf(to, {before}) + notOneOf(from, {nothing})
                                  : notOneOf(to, {nothing, before}) + notOneOf(from, {nothing, before});
}

TEST(FileFaults, AMovedFileIsAtOneOfTheTwoPlaces) {
    tryAllFaults({oldFile,
                  [](const fs::path& folder) {
                      files::move(folder / "a.xml", folder / "b.xml");
                      return Ending::Done;
                  },
                  [](const fs::path& folder, Ending ending) {
                      return moved(folder / "a.xml", folder / "b.xml", ending);
                  }});
}

TEST(FileFaults, AFileMovedToAnotherDiskIsAtOneOfTheTwoPlaces) {
    const fs::path disk = "/tmp/tv-falhas-" + std::to_string(::getpid());
    fs::create_directory(disk);
    tryAllFaults({[&](const fs::path& folder) {
                      oldFile(folder);
                      fs::remove(disk / "b.xml");
                  },
                  [&](const fs::path& folder) {
                      files::move(folder / "a.xml", disk / "b.xml");
                      return Ending::Done;
                  },
                  [&](const fs::path& folder, Ending ending) {
                      return moved(folder / "a.xml", disk / "b.xml", ending);
                  },
                  disk});
    fs::remove_all(disk);
}

} // namespace
} // namespace tv::test
