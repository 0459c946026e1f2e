#pragma once

#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <zelvane/inputbypath/Export.h>
#include <zelvane/inputbypath/Options.h>
#include <zelvane/utils/ChannelParser.h>

namespace ZelvaneBoardInputByPath {

/// Options of a port fed by meshes. Keys, besides those of `Options`:
///
/// | Key                  | Member               | Default | Format             |
/// |----------------------|----------------------|---------|--------------------|
/// | "componentTagFilter" | `componentTagFilter` | "*"     | channel expression |
/// | "faceVertexNormals"  | `faceVertexNormals`  | true    | bool               |
/// | "pointNormals"       | `pointNormals`       | false   | bool               |
/// | "faceNormals"        | `faceNormals`        | false   | bool               |
/// | "channelFilter"      | `channelFilter`      | "*"     | channel expression |
///
/// Channel expressions follow `ZEL::Utils::ChannelParser`; a malformed one counts as a bad
/// value (the member keeps its previous expression).
///
/// `channelFilter` points at a parser that selects UV sets, colour sets and face sets by
/// name. It normally points at this object's own parser, built by `setChannelFilter` (and by
/// parsing) from the expression; callers may point it at a parser of their own instead,
/// which must then outlive the options. Copies point at their own parser when the original
/// did, and at the same external parser otherwise. The stored expression is
/// `channelFilter->expression()`.
class ZELVANE_INPUTBYPATH_API MeshOptions : public Options {
public:
    MeshOptions();
    MeshOptions(const MeshOptions& other);
    MeshOptions& operator=(const MeshOptions& other);
    ~MeshOptions() override;

    bool parseAttributes(const Orsel::MetadataItem& options) override;
    void storeAttributes(Orsel::MetadataItem& options) const override;

    /// Rebuilds the own channel filter from `expression` and points `channelFilter` at it.
    /// False (nothing changed) when the expression is malformed.
    bool setChannelFilter(const Orsel::String& expression);
    /// The expression of the current channel filter ("" when it is null).
    const Orsel::String& channelFilterExpression() const noexcept;

    Orsel::String componentTagFilter = Orsel::String::literal("*");
    bool faceVertexNormals = true;
    bool pointNormals = false;
    bool faceNormals = false;
    const ZEL::Utils::ChannelParser* channelFilter;

private:
    ZEL::Utils::ChannelParser ownChannelFilter_;
};

} // namespace ZelvaneBoardInputByPath
