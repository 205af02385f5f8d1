// The ten-line alternative with OpenCV. Arguments: IN OUT and eight coordinates.
#include <cstdlib>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

int main(int, char** argv) {
  const cv::Mat in = cv::imread(argv[1], cv::IMREAD_UNCHANGED);
  const float w = float(in.cols), h = float(in.rows);
  const cv::Point2f from[4] = {{0, 0}, {w, 0}, {w, h}, {0, h}};
  cv::Point2f to[4];
  for (int i = 0; i < 4; ++i) {
    to[i] = {std::strtof(argv[3 + 2 * i], nullptr), std::strtof(argv[4 + 2 * i], nullptr)};
  }
  cv::Mat out;
  cv::warpPerspective(in, out, cv::getPerspectiveTransform(from, to), in.size());
  return cv::imwrite(argv[2], out) ? 0 : 1;
}
