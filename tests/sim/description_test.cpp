// Every mistake in a board description is named with file and line, and with what would be right.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

// The smallest board there is. Tests count on its lines.
const std::string small_board = "<board name=\"small\" slot=\"9\">\n"                                            // 1
                                "  <module name=\"i2c\">\n"                                                      // 2
                                "    <node name=\"i2c_dev\">\n"                                                  // 3
                                "      <entry name=\"entry0\"><element name=\"chip_id\" value=\"3\"/></entry>\n" // 4
                                "      <entry name=\"entry1\"><element name=\"chip_id\" value=\"0x4\"/></entry>\n"
                                "    </node>\n" // 6
                                "  </module>\n"
                                "  <module name=\"sim_eeprom_layout\">\n" // 8
                                "    <node name=\"plain\">\n"
                                "      <entry name=\"0\">\n" // 10
                                "        <element name=\"offset\" value=\"0\"/>\n"
                                "        <element name=\"size\" value=\"64\"/>\n" // 12
                                "      </entry>\n"
                                "      <entry name=\"8\">\n" // 14
                                "        <element name=\"offset\" value=\"64\"/>\n"
                                "        <element name=\"size\" value=\"28\"/>\n" // 16
                                "      </entry>\n"
                                "    </node>\n"
                                "  </module>\n"
                                "  <module name=\"sim_identity\">\n" // 20
                                "    <node name=\"eeprom\">\n"
                                "      <entry name=\"0\">\n" // 22
                                "        <element name=\"layout\" text=\"plain\"/>\n"
                                "        <element name=\"device_id\" value=\"0\"/>\n" // 24
                                "      </entry>\n"
                                "    </node>\n"
                                "    <node name=\"elabel\">\n"
                                "      <entry name=\"0\"><element name=\"text\" text=\"a label\"/></entry>\n" // 28
                                "    </node>\n"
                                "    <node name=\"mac\">\n"
                                "      <entry name=\"1\">\n" // 31
                                "        <element name=\"count\" value=\"2\"/>\n"
                                "        <element name=\"base\" value=\"0x020000000001\"/>\n" // 33
                                "      </entry>\n"
                                "    </node>\n"
                                "  </module>\n"
                                "</board>\n";

std::string said_about(const std::string &content, std::string &file) {
    file = scratch_file("board.xml", content);
    return prepare_says(file, new_scratch_dir() + "/state");
}

void expect_said(const std::string &content, const std::string &line_and_text) {
    std::string file;
    const std::string said = said_about(content, file);
    EXPECT_EQ(said, file + ":" + line_and_text);
}

void expect_said_with(const std::string &part, const std::string &by, const std::string &line_and_text) {
    expect_said(replaced(small_board, part, by), line_and_text);
}

} // namespace

TEST(Description, SmallestBoardIsAccepted) {
    std::string file;
    EXPECT_EQ(said_about(small_board, file), "");
}

TEST(Description, DeliveredBoardsAreAccepted) {
    for (const char *name : {"mpu_master", "mpu_slave", "lpu"}) {
        EXPECT_EQ(prepare_says(name, new_scratch_dir() + "/state"), "") << name;
    }
}

TEST(Description, MissingFile) {
    const std::string file = new_scratch_dir() + "/none.xml";
    EXPECT_EQ(prepare_says(file, new_scratch_dir() + "/state"),
              file + ": there is no such file; --board takes the file of a board or chassis, or a name: lpu, "
                     "mpu_master, mpu_slave");
}

TEST(Description, MalformedXmlIsPointedAt) {
    expect_said_with("</node>\n  </module>\n  <module name=\"sim_eeprom_layout\">",
                     "</nod>\n  </module>\n  <module name=\"sim_eeprom_layout\">",
                     "6: not well-formed XML: Start-end tags mismatch; a <chassis>, <board> or <part> of <module>, "
                     "<node>, <entry> and <element>");
    expect_said("", "1: not well-formed XML: No document element found; a <chassis>, <board> or <part> of <module>, "
                    "<node>, <entry> and <element>");
}

TEST(Description, WrongTags) {
    expect_said("<bord name=\"x\"/>\n", "1: <bord> stands here; here <board> or <chassis> is due");
    expect_said_with("<node name=\"i2c_dev\">\n", "<group name=\"i2c_dev\"/><node name=\"i2c_dev\">\n",
                     "3: <group> stands here; here <node> is due");
    expect_said_with("<entry name=\"entry1\">", "<entry name=\"entry1\"><entry name=\"x\"/>",
                     "5: <entry> stands here; here <element> is due");
    expect_said_with("value=\"3\"/>", "value=\"3\"><element name=\"x\" value=\"1\"/></element>",
                     "4: something below an element; an element has only name and value or text");
}

TEST(Description, TextBetweenTags) {
    expect_said_with("<element name=\"chip_id\" value=\"3\"/>", "3",
                     "4: text between the tags; values stand in the attributes value and text of an element");
}

TEST(Description, SecondRoot) {
    expect_said(small_board + "<board name=\"other\"/>\n", "38: something behind the <board>; a file describes one");
}

TEST(Description, MissingAndBadNames) {
    expect_said_with("<node name=\"i2c_dev\">", "<node>", "3: a node without a name; give it name=\"...\"");
    expect_said_with("<board name=\"small\" slot=\"9\">", "<board name=\"\" slot=\"9\">",
                     "1: a board without a name; give it name=\"...\"");
    expect_said_with("name=\"i2c_dev\"", "name=\"i2c dev\"",
                     "3: name 'i2c dev' holds a blank or a slash; use letters, digits, _, - and @");
}

TEST(Description, DuplicateNames) {
    expect_said_with("  <module name=\"sim_eeprom_layout\">\n",
                     "<module name=\"i2c\"/>\n<module name=\"sim_eeprom_layout\">\n",
                     "8: 'i2c' is there twice; names differ among siblings");
    expect_said_with("value=\"3\"/>", "value=\"3\"/>\n<element name=\"chip_id\" value=\"5\"/>",
                     "5: 'chip_id' is there twice; names differ among siblings");
}

TEST(Description, NumberingHasNoGaps) {
    expect_said_with("name=\"entry1\"", "name=\"entry2\"", "5: 'entry2' is out of sequence; here 'entry1' is due");
    expect_said_with("name=\"entry0\"", "name=\"entry00\"", "4: 'entry00' is out of sequence; here 'entry0' is due");
    expect_said_with("<node name=\"i2c_dev\">", "<node name=\"i2c@1\"/><node name=\"i2c_dev\">",
                     "3: 'i2c@1' is out of sequence; here 'i2c@0' is due");
    expect_said_with("<node name=\"i2c_dev\">",
                     "<node name=\"x\"><entry name=\"hwirq_cfg1\"/></node><node name=\"i2c_dev\">",
                     "3: 'hwirq_cfg1' is out of sequence; here 'hwirq_cfg0' is due");
}

TEST(Description, Values) {
    expect_said_with(" value=\"3\"", "",
                     "4: element 'chip_id' has no value; give it value=\"a number\" or text=\"...\"");
    expect_said_with(" value=\"3\"", " value=\"3\" text=\"three\"",
                     "4: element 'chip_id' has both a value and a text; keep one of them");
    for (const char *bad : {"three", "3 ", "0x", "-", "3V", "18446744073709551616", ""}) {
        expect_said_with(" value=\"3\"", std::string(" value=\"") + bad + "\"",
                         std::string("4: value '") + bad +
                             "' of element 'chip_id' is no number; write a decimal or 0x number of at most 64 bits, or "
                             "use text=\"...\"");
    }
    expect_said_with(" value=\"3\"", " valeu=\"3\"", "4: unknown attribute 'valeu'; a element has: name, value, text");
    expect_said_with("<entry name=\"entry0\">", "<entry name=\"entry0\" id=\"1\">",
                     "4: unknown attribute 'id'; a entry has: name");
}

TEST(Description, NamesFitTheStore) {
    // "slot65535/card255", "i2c", "i2c_dev" and "entry0" leave room for 74 characters behind four slashes.
    std::string file;
    EXPECT_EQ(said_about(replaced(small_board, "name=\"chip_id\"", "name=\"" + std::string(74, 'n') + "\""), file), "");
    expect_said_with("name=\"chip_id\"", "name=\"" + std::string(75, 'n') + "\"",
                     "4: the names down to this element are 112 characters long; keep them within 111");
}

TEST(Description, EveryBoardHasAnIdentity) {
    expect_said("<board name=\"bare\" slot=\"9\">\n</board>\n",
                "1: module 'sim_identity' of the board is missing; it holds the identity EEPROM, without which no "
                "board can be built");
    expect_said_with("<node name=\"eeprom\">", "<node name=\"eprom\">",
                     "21: unknown node 'eprom' of sim_identity; the nearest is 'eeprom'");
    expect_said_with("text=\"plain\"", "text=\"fancy\"",
                     "22: there is no EEPROM layout 'fancy'; name a node of module sim_eeprom_layout of the "
                     "chassis, or describe it there");
    expect_said_with("<element name=\"device_id\" value=\"0\"/>", "",
                     "22: element 'device_id' is missing here; it holds the EEPROM's device number");
    expect_said_with(
        "<element name=\"device_id\" value=\"0\"/>", "<element name=\"device_id\" text=\"0\"/>",
        "24: element 'device_id' is not a number from 0 to 4294967295; it holds the EEPROM's device number");
}

TEST(Description, EepromSections) {
    expect_said_with("<element name=\"size\" value=\"64\"/>", "",
                     "10: element 'size' is missing here; it holds the bytes of the EEPROM section");
    expect_said_with("value=\"64\"/>\n      </entry>\n      <entry name=\"8\">",
                     "value=\"65\"/>\n      </entry>\n      <entry name=\"8\">",
                     "14: the section lies over section 0; sections have bytes of their own");
    expect_said_with("<element name=\"size\" value=\"28\"/>", "<element name=\"size\" value=\"0\"/>",
                     "14: the section has no bytes; give it a size");
    expect_said_with("<entry name=\"8\">", "<entry name=\"mac\">",
                     "14: entry 'mac' is no number; entries of devices are named by their plain number");
}

TEST(Description, StoredIdentityFitsItsSections) {
    expect_said_with("text=\"a label\"", "text=\"" + std::string(65, 'l') + "\"",
                     "28: element 'text' is no text of at most 64 bytes; it holds the electronic label");
    expect_said_with("<entry name=\"0\"><element name=\"text\" text=\"a label\"/></entry>",
                     "<entry name=\"1\"><element name=\"text\" text=\"a label\"/></entry>",
                     "28: entry '1' is no number up to 0; entries of devices are named by their plain number");
    expect_said_with("<node name=\"elabel\">", "<node name=\"barcode\">",
                     "28: the EEPROM layout has no section for bar codes; leave the bar code out");
    expect_said_with(
        "value=\"0x020000000001\"", "value=\"0x1020000000001\"",
        "33: element 'base' is not a number from 0x00000000 to 0xffffffffffff; it holds the first address, as a number "
        "of 48 bits");
    expect_said_with(
        "<node name=\"mac\">",
        "<node name=\"mac\"><entry name=\"2\"><element name=\"count\" value=\"1\"/><element name=\"base\" "
        "value=\"1\"/></entry><entry name=\"3\"><element name=\"count\" value=\"1\"/><element name=\"base\" "
        "value=\"2\"/></entry>",
        "31: the EEPROM layout has room for 2 MAC address types; leave this one out");
    expect_said_with("<node name=\"mac\">",
                     "<node name=\"section\"><entry name=\"7\"><element name=\"text\" "
                     "text=\"x\"/></entry></node>\n<node name=\"mac\">",
                     "30: the EEPROM layout has no section 7; use one that it has");
}

TEST(Description, LibrariesThatTheBoardLacks) {
    const std::string lacking = "<module name=\"sim_library\"><node name=\"lacking\"><entry name=\"0\">"
                                "<element name=\"name\" text=\"NAME\"/></entry></node></module>\n</board>";
    const std::string board = replaced(small_board, "</board>", lacking);
    expect_said(replaced(board, "NAME", "drv_basic"),
                "37: 'drv_basic' is no library that a board may lack; right are drv_clusterport, drv_inner_eth, "
                "drv_mng_eth, drv_inphi115050, optical_lib");
}

TEST(Description, StorageImages) {
    const std::string storage = "<module name=\"sim_storage\"><node name=\"image\"><entry name=\"NAME\">"
                                "<element name=\"size\" value=\"4096\"/></entry></node></module>\n</board>";
    const std::string board = replaced(small_board, "</board>", storage);
    expect_said(replaced(board, "NAME", "flash"),
                "37: element 'fill' is missing here; it holds the byte that the new image is filled with");
    expect_said(replaced(board, "NAME", "../flash"),
                "37: name '../flash' holds a blank or a slash; use letters, digits, _, - and @");
    const std::string filled =
        replaced(board, "value=\"4096\"/>", "value=\"4096\"/><element name=\"fill\" value=\"0\"/>");
    expect_said(replaced(filled, "NAME", "eeprom-self"),
                "37: 'eeprom-self' is no name for an image; use small letters, digits, _ and -; names with eeprom in "
                "front are taken");
}

} // namespace kestro_tests
