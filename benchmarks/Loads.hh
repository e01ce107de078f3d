#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

/// The declarations of a model, one line each, for comparing models.
class Listing {
public:
    enum Detail { namesOnly, all };

    explicit Listing(Detail detail) : _detail(detail) {}

    void declare(std::string_view kind, std::string_view name, std::initializer_list<unsigned long> handles = {}) {
        _text.append(kind).append(" ").append(name);
        if (_detail == all)
            for (const unsigned long handle : handles)
                _text.append(" ").append(std::to_string(handle));
        _text += '\n';
    }
    Detail detail() const { return _detail; }
    const std::string &text() const { return _text; }

private:
    Detail _detail;
    std::string _text;
};

/// A federation in memory, as one of the contenders holds it. A listing has, in this order,
///
///     space NAME HANDLE                 dimension NAME HANDLE
///     class NAME HANDLE PARENT          attribute NAME HANDLE TRANSPORTATION ORDERING SPACE CLASS
///     interaction NAME HANDLE PARENT TRANSPORTATION ORDERING SPACE
///     parameter NAME HANDLE
///
/// where names of classes are full; a listing of names only omits the space that is added for the MOM.
class Model {
public:
    Model() = default;
    Model(const Model &) = delete;
    Model &operator=(const Model &) = delete;
    virtual ~Model() = default;

    virtual void list(Listing &listing) const = 0;
};

/// A way to load a federation.
struct Load {
    std::function<std::unique_ptr<Model>()> load; ///< From a file, or from an image that is in memory already.
    Listing::Detail detail;                       ///< The details in which models can be compared.
};

/// The contender's load of the federation in STEM.fed, STEM.xml and STEM.proto; throws if the contender is unknown.
/// "text" and "image" are ours; "maps" are flat hash maps built from the XML, "tree" only parses that XML,
/// "descriptors" is a descriptor pool, and "plain" a simple reader of the FED text.
Load loadOf(const std::string &contender, const std::string &stem);

/// A simple reader of the FED text: recursive descent, maps of strings in upper case, and records on the heap.
std::unique_ptr<Model> loadPlainly(const std::string &fedFile);
/// The model of a database in flat hash maps, built from the XML. Names are matched in their exact case.
std::unique_ptr<Model> loadIntoHashMaps(const std::string &xmlFile);
