#pragma once

#include <boost/noncopyable.hpp>

class TiXmlElement;

namespace OV::Products::VN4::State {

// Something saved and loaded with every host program, beside the documents.
class Serializable : boost::noncopyable {
public:
    virtual ~Serializable() = default;
    virtual void Load(const TiXmlElement& element) = 0;
    virtual void Save(TiXmlElement& element) = 0;
};

}  // namespace OV::Products::VN4::State
