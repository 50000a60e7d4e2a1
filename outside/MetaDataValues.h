// MetaDataValues: the facts of a design file that the metadata kernel fills in and the
// document routes read. The caller makes the record and may preset fields: a field the
// kernel can't fill keeps what was there.
#ifndef OUTSIDE_METADATAVALUES_H_
#define OUTSIDE_METADATAVALUES_H_

#include <map>
#include <set>
#include <string>
#include <vector>

struct MetaDataValues {
  std::string page_count;   // pages (or artboards), a decimal number
  std::string width;        // in the format's own unit, a decimal number
  std::string height;
  std::string color_mode;   // "RGB", "CMYK", "Grayscale", ...; "CMYK" in any case counts
  std::string resolution;   // pixels per inch
  std::string bit_depth;    // bits per channel
  std::string doc_version;  // the format's version; empty: the file couldn't be read
  std::string creator;      // the program that wrote the file
  std::string create_time;
  std::string modify_time;
  int layer_count = 0;
  std::set<std::string> fonts;
  std::vector<std::string> thumbnails;  // Base64 text of a page image, one a page
  std::map<std::string, std::string> properties;  // anything else, by name
};

#endif  // OUTSIDE_METADATAVALUES_H_
