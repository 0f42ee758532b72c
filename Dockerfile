# An image to try the extension in: Debian's PHP, the package, the examples.
#
#   docker build -t sepa . && docker run --rm sepa
#   docker run --rm -it sepa php -a
FROM debian:12 AS build
COPY . /sepa
RUN /sepa/script/package

FROM debian:12
COPY --from=build /sepa/out/packages/php*-sepa_*.deb /tmp/
RUN apt-get update \
    && apt-get install -y --no-install-recommends /tmp/php*-sepa_*.deb \
    && rm -rf /tmp/*.deb /var/lib/apt/lists/* \
    && ln -s /usr/share/doc/php*-sepa/examples /examples
WORKDIR /examples
USER nobody
CMD ["php", "credit_transfer.php"]
