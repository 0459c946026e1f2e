#pragma once

#include <orsel/Array.h>
#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <zelvane/inputbypath/Export.h>

namespace ZelvaneBoardInputByPath {

/// Options of a graph port, read from the port's metadata.
///
/// Keys (text values; unknown keys are ignored):
///
/// | Key       | Member    | Default | Format                                              |
/// |-----------|-----------|---------|-----------------------------------------------------|
/// | "paths"   | `paths`   | none    | host node paths separated by ';' (blanks trimmed)   |
/// | "noShape" | `noShape` | false   | bool: 1/0, true/false, on/off, yes/no               |
///
/// `parseAttributes` reads every key it knows that is present. A malformed value leaves that
/// member as it was and makes the call return false; the other keys are still read.
/// `storeAttributes` writes every key (replacing existing ones), so that parsing what was
/// stored gives the same options.
class ZELVANE_INPUTBYPATH_API Options {
public:
    Options();
    Options(const Options& other);
    Options& operator=(const Options& other);
    virtual ~Options();

    /// Reads the options from `options`, the item whose children are the keys.
    virtual bool parseAttributes(const Orsel::MetadataItem& options);
    /// Writes the options as children of `options`.
    virtual void storeAttributes(Orsel::MetadataItem& options) const;

    /// `parseAttributes(getOptions(metadata))`: takes port metadata or the options item.
    bool parse(const Orsel::MetadataItem& metadata);

    /// Host nodes that feed the port by path.
    Orsel::Array<Orsel::String> paths;
    /// The port asks for no shape (no display shape is made for an output).
    bool noShape = false;
};

/// The item that holds a port's options: the child `Keys::kOptions` ("inputByPath") of
/// `portMetadata` when there is one, otherwise `portMetadata` itself.
ZELVANE_INPUTBYPATH_API const Orsel::MetadataItem&
getOptions(const Orsel::MetadataItem& portMetadata);

} // namespace ZelvaneBoardInputByPath
