# The local platform in a container, from the project's own Debian packages; built by hand:
#   docker build -t nexwire .
#   docker run --rm -p 127.0.0.1:8080:8080 -e NEXWIRE_TOKEN=<16 characters or more> -v site:/site nexwire
# Every request then brings "Authorization: Bearer <token>"; the page is at http://localhost:8080/_workbench/?token=<token>.
FROM debian:12 AS build
COPY . /source
WORKDIR /source
RUN scripts/install-deps && scripts/package

FROM debian:12
COPY --from=build /source/build/package/packages/ /packages/
RUN apt-get update \
    && apt-get install -y --no-install-recommends /packages/libnexwire0_*.deb /packages/nexwire_*.deb \
    && rm -rf /packages /var/lib/apt/lists/* \
    && useradd --system --home-dir /site --create-home site
USER site
VOLUME /site
EXPOSE 8080
ENTRYPOINT ["nexwire", "platform", "--listen", "0.0.0.0", "--port", "8080", "--token", "@env:NEXWIRE_TOKEN", "--db", "/site/site.db"]
