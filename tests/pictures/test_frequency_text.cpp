// Frequencies as texts name them.

#include <gtest/gtest.h>

#include "pictures/frequency_text.h"

using pictures::frequencies_text;

TEST(FrequencyText, HasOneUnitForAll) {
  EXPECT_EQ(frequencies_text({3000.0}, 5), "3000 Hz");
  EXPECT_EQ(frequencies_text({291.7712, 3416.02}, 5), "291.77 and 3416 Hz");
  EXPECT_EQ(frequencies_text({0.5, 20000.0}, 5), "0.5 and 20000 Hz");
}

TEST(FrequencyText, HasNoExponentAndNoRoundingNoise) {
  EXPECT_EQ(frequencies_text({1234567.0}, 5), "1234567 Hz");
  EXPECT_EQ(frequencies_text({999.9999999}, 5), "1000 Hz");
  EXPECT_EQ(frequencies_text({0.00012345678}, 5), "0.00012346 Hz");
}

TEST(FrequencyText, TellsCloseNeighboursApart) {
  EXPECT_EQ(frequencies_text({20000.123, 20000.456}, 5), "20000.12 and 20000.46 Hz");
  EXPECT_EQ(frequencies_text({20000.0, 20000.0}, 5), "20000 and 20000 Hz");
}
